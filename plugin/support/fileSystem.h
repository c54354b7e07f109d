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
  std::uint64_t identity = 0;  ///< the file system's own number of the file
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

  /// Appends bytes; they may wait in a buffer.
  virtual Toutcome write(std::string_view bytes) = 0;
  /// Brings everything written so far to the disk, to outlast a loss of power. Where it fails, any of it may be lost.
  virtual Toutcome flush() = 0;
  /// Writes what still waits and closes. Where it fails, something was lost. To be called once, and last.
  virtual Toutcome close() = 0;
};

/// How reading a file ended.
struct TreadResult {
  /// `missing`: nothing has that name. `notOpened`: something has, but it cannot be opened or is no regular file.
  enum class Tend { done, missing, notOpened, readFailed, closeFailed };

  Tend end = Tend::done;
  std::optional<Tfailure> failure;  ///< for any end but `done` and `missing`
};

/// The operations on files that saving and loading need, narrow enough to fail any one of them in a test.
/// No operation throws; each tells whether it did its work, and if not, why.
class TfileSystem {
 public:
  virtual ~TfileSystem() = default;

  /// Reads a whole file, byte for byte, into `content`. After a failure `content` holds nothing of use.
  virtual TreadResult read(const std::filesystem::path& path, std::string& content) = 0;

  /// The stamp of a regular file; nothing where there is none.
  virtual std::optional<TfileStamp> stamp(const std::filesystem::path& path) = 0;

  /// Succeeds if the file could be opened for writing, were it to be overwritten in place (a missing one: created).
  virtual Toutcome checkWritable(const std::filesystem::path& path) = 0;

  /// Creates or empties a file for writing, with the permissions of `like` where that file exists, and opens `writer`
  /// on it.
  virtual Toutcome create(const std::filesystem::path& path, const std::filesystem::path& like,
                          std::unique_ptr<TfileWriter>& writer) = 0;

  /// Gives `from` the name `to` in one step, replacing a file of that name.
  virtual Toutcome rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;

  /// Removes a file. Succeeds also where there was none.
  virtual Toutcome remove(const std::filesystem::path& path) = 0;

  /// Brings the folder's entries (names created, renamed, removed) to the disk.
  virtual Toutcome flushFolder(const std::filesystem::path& folder) = 0;

  /// The path that `path` leads to through symbolic links; `path` itself where it is none.
  virtual std::filesystem::path resolve(const std::filesystem::path& path) = 0;
};

/// The machine's own file system. Logs every operation that fails. Lives as long as the module.
TfileSystem& diskFileSystem();

/// The failure of an operation on a file with the system's error number, which is logged, too.
Tfailure loggedFailure(const char* operation, const std::filesystem::path& path, int error);
