#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "support/failure.h"

/// Identity, length and time of a file. The stamps of one path differ once the file was replaced or written.
struct TfileStamp {
  std::uint64_t identity = 0;  ///< the file system's number for the file
  std::uint64_t length = 0;    ///< bytes
  std::int64_t modified = 0;   ///< nanoseconds, of the file system's clock

  bool operator==(const TfileStamp&) const = default;
};

/// A new file being written. Destroying it closes it, finished or not.
class TfileWriter {
 public:
  TfileWriter() = default;
  TfileWriter(const TfileWriter&) = delete;
  TfileWriter& operator=(const TfileWriter&) = delete;
  virtual ~TfileWriter() = default;

  /// Appends bytes, possibly to a buffer.
  virtual Toutcome write(std::string_view bytes) = 0;
  /// Brings everything written so far to the disk, where it outlasts a loss of power. After a failure any of it may be
  /// missing.
  virtual Toutcome flush() = 0;
  /// Writes what is still buffered, and closes. After a failure something is lost. Call it once, as the last.
  virtual Toutcome close() = 0;
};

/// How reading a file ended.
struct TreadResult {
  /// `missing`: nothing has that name. `notOpened`: something has, but it cannot be opened or is no regular file.
  enum class Tend { done, missing, notOpened, readFailed, closeFailed };

  Tend end = Tend::done;
  std::optional<Tfailure> failure;  ///< for any end but `done` and `missing`
};

/// The operations on files that saving and loading need. A test can fail any one of them. No operation throws; each
/// reports whether it succeeded and, if not, why.
class TfileSystem {
 public:
  virtual ~TfileSystem() = default;

  /// Reads a whole file, byte for byte, into `content`. After a failure `content` holds nothing of use.
  virtual TreadResult read(const std::filesystem::path& path, std::string& content) = 0;

  /// The stamp of a regular file; nothing if there is none.
  virtual std::optional<TfileStamp> stamp(const std::filesystem::path& path) = 0;

  /// Succeeds if the file could be opened for writing, were it to be overwritten in place (a missing one: created).
  virtual Toutcome checkWritable(const std::filesystem::path& path) = 0;

  /// Creates or empties a file for writing, with the permissions of `like` where that file exists, and opens `writer`
  /// on it.
  virtual Toutcome create(const std::filesystem::path& path, const std::filesystem::path& like,
                          std::unique_ptr<TfileWriter>& writer) = 0;

  /// Gives `from` the name `to` in one step, replacing a file of that name.
  virtual Toutcome rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;

  /// Removes a file. Succeeds also if there was none.
  virtual Toutcome remove(const std::filesystem::path& path) = 0;

  /// Brings the folder's entries (names created, renamed, removed) to the disk.
  virtual Toutcome flushFolder(const std::filesystem::path& folder) = 0;

  /// The path that `path` leads to through symbolic links; `path` itself if it is none.
  virtual std::filesystem::path resolve(const std::filesystem::path& path) = 0;
};

/// Creates the file at `path`, or empties it, and brings `content` to the disk, with the permissions of `like`. Where
/// it fails, a part of the content may be there.
Toutcome writeFlushed(TfileSystem& files, const std::filesystem::path& path, const std::filesystem::path& like,
                      std::string_view content);

/// Replaces the content of one file, all or nothing, whatever happens meanwhile; keeps its permissions, and a symbolic
/// link in its place. Where it fails, the file holds the old content whole or, if only the very last flush failed, the
/// new one.
Toutcome replaceFile(TfileSystem& files, const std::filesystem::path& path, std::string_view content);

/// The machine's own file system. Logs every operation that fails. Lives as long as the module.
TfileSystem& diskFileSystem();

/// The failure of an operation on a file with the system's error number, which is logged, too.
Tfailure loggedFailure(const char* operation, const std::filesystem::path& path, int error);
