#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// What a file was when it was looked at. Two stamps of one path differ once the file was replaced or written.
struct TfileStamp {
  std::uint64_t identity = 0;  ///< the file system's own number of the file
  std::uint64_t length = 0;    ///< bytes
  std::int64_t modified = 0;   ///< nanoseconds, of the file system's clock

  bool operator==(const TfileStamp&) const = default;
};

/// A new file being written. Destroying it closes it, finished or not.
class TfileWriter {
 public:
  virtual ~TfileWriter() = default;

  /// Appends bytes; they may wait in a buffer. False: they could not all be written.
  virtual bool write(std::string_view bytes) = 0;
  /// Brings everything written so far to the disk, to outlast a loss of power. False: it may not be there.
  virtual bool flush() = 0;
  /// Writes what still waits and closes. False: something was lost. To be called once, and last.
  virtual bool close() = 0;
};

/// The operations on files that saving and loading need, narrow enough to fail any one of them in a test.
/// No operation throws; each tells by its result whether it did its work.
class TfileSystem {
 public:
  enum class TreadResult { done, notOpened, readFailed, closeFailed };

  virtual ~TfileSystem() = default;

  /// Reads a whole file, byte for byte, into `content`. `notOpened` also stands for anything that is not a regular
  /// file. After a failure `content` holds nothing of use.
  virtual TreadResult read(const std::filesystem::path& path, std::string& content) = 0;

  /// The stamp of a regular file; nothing where there is none.
  virtual std::optional<TfileStamp> stamp(const std::filesystem::path& path) = 0;

  /// Whether the file could be opened for writing, were it to be overwritten in place (a missing one: created).
  virtual bool isWritable(const std::filesystem::path& path) = 0;

  /// Creates or empties a file for writing, with the permissions of `like` where that file exists. Null: not opened.
  virtual std::unique_ptr<TfileWriter> create(const std::filesystem::path& path, const std::filesystem::path& like) = 0;

  /// Gives `from` the name `to` in one step, in place of a file that may stand there.
  virtual bool rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;

  /// Removes a file. True also where there was none.
  virtual bool remove(const std::filesystem::path& path) = 0;

  /// Brings the folder's entries (names created, renamed, removed) to the disk.
  virtual bool flushFolder(const std::filesystem::path& folder) = 0;

  /// The path that `path` leads to through symbolic links, itself where it is none.
  virtual std::filesystem::path resolve(const std::filesystem::path& path) = 0;
};

/// The machine's own file system. Lives as long as the module.
TfileSystem& diskFileSystem();
