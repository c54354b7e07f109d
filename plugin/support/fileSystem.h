#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/failure.h"

/// Identity, length and times of a file. The stamps of one path differ once the file was replaced or written.
struct TfileStamp {
  std::uint64_t device = 0;    ///< the system's number for the file system
  std::uint64_t identity = 0;  ///< the file system's number for the file
  std::uint64_t length = 0;    ///< bytes
  std::int64_t modified = 0;   ///< nanoseconds, of the file system's clock
  std::int64_t changed = 0;    ///< as `modified`, of the last change of content or status; 0 where the system has none

  bool operator==(const TfileStamp&) const = default;
};

/// What looking at a file told. Only `absent` means that nothing is there.
struct TstampResult {
  /// `absent`: nothing has that name. `notAFile`: something else than a regular file has. `unknown`: it could not be
  /// looked at.
  enum class Tend { found, absent, notAFile, unknown };

  Tend end = Tend::absent;
  TfileStamp stamp;                 ///< if found
  std::optional<Tfailure> failure;  ///< if neither found nor absent

  bool isFound() const { return end == Tend::found; }
  bool isAbsent() const { return end == Tend::absent; }
};

/// A file being written. Destroying it closes it, finished or not.
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

/// A lock on a file, held until it is destroyed or its process ends.
class TfileLock {
 public:
  TfileLock() = default;
  TfileLock(const TfileLock&) = delete;
  TfileLock& operator=(const TfileLock&) = delete;
  virtual ~TfileLock() = default;
};

/// How asking for a lock ended.
struct TlockResult {
  /// `busy`: somebody else held it all the time. `absent`: there is no such file. `unavailable`: the file cannot be
  /// opened or created, is no regular file, or its file system knows no locks.
  enum class Tend { held, busy, absent, unavailable };

  Tend end = Tend::unavailable;
  std::unique_ptr<TfileLock> lock;  ///< if held
  std::optional<Tfailure> failure;  ///< if unavailable
};

/// How reading a file ended.
struct TreadResult {
  /// `missing`: nothing has that name. `notOpened`: something has, but it cannot be opened or is no regular file.
  /// `tooLarge`: it is longer than asked for.
  enum class Tend { done, missing, notOpened, tooLarge, readFailed, closeFailed };

  Tend end = Tend::done;
  std::optional<Tfailure> failure;  ///< for any end but `done` and `missing`
};

/// The operations on files that saving and loading need. A test can fail any one of them. No operation throws; each
/// reports whether it succeeded and, if not, why. A call that a signal interrupts is made again.
class TfileSystem {
 public:
  virtual ~TfileSystem() = default;

  /// Reads a whole file of at most `most` bytes, byte for byte, into `content`. After a failure `content` holds nothing
  /// of use. Never waits for a pipe.
  virtual TreadResult read(const std::filesystem::path& path, std::string& content,
                           std::uint64_t most = std::numeric_limits<std::uint64_t>::max()) = 0;

  /// The stamp of a regular file, found through symbolic links.
  virtual TstampResult stamp(const std::filesystem::path& path) = 0;

  /// Succeeds if the file could be opened for writing, were it to be overwritten in place (a missing one: created).
  virtual Toutcome checkWritable(const std::filesystem::path& path) = 0;

  /// Creates a file for writing, with the permissions of `like` where that file exists, and opens `writer` on it. Fails
  /// if anything has that name, a link that leads nowhere included.
  virtual Toutcome create(const std::filesystem::path& path, const std::filesystem::path& like,
                          std::unique_ptr<TfileWriter>& writer) = 0;

  /// Opens `writer` on a regular file, behind its last byte. Follows no link.
  virtual Toutcome append(const std::filesystem::path& path, std::unique_ptr<TfileWriter>& writer) = 0;

  /// Locks a file against everybody else, other locks of this process included, and waits for that at most `wait`.
  /// `create`: makes an empty file if there is none, with the permissions of `like` where that file exists. Who may
  /// only read the file shares the lock with others that do. Follows no link. The file that is locked still has this
  /// name when the call returns. Reading and appending by `TfileSystem` need no lock and are not hindered by one.
  virtual TlockResult lock(const std::filesystem::path& path, bool create, const std::filesystem::path& like,
                           std::chrono::milliseconds wait) = 0;

  /// Gives `from` the name `to` in one step, replacing a file of that name. Renames folders, too, unless `to` exists.
  virtual Toutcome rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;

  /// Removes a file. Succeeds also if there was none.
  virtual Toutcome remove(const std::filesystem::path& path) = 0;

  /// The names of everything in a folder, in no order; none if there is no such folder.
  virtual Toutcome list(const std::filesystem::path& folder, std::vector<std::filesystem::path>& names) = 0;

  /// Makes a folder. Succeeds also if there is one.
  virtual Toutcome makeFolder(const std::filesystem::path& folder) = 0;

  /// Removes an empty folder. Succeeds also if there was none.
  virtual Toutcome removeFolder(const std::filesystem::path& folder) = 0;

  /// Brings the folder's entries (names created, renamed, removed) to the disk.
  virtual Toutcome flushFolder(const std::filesystem::path& folder) = 0;

  /// The path that `path` leads to through symbolic links; `path` itself if it is none.
  virtual std::filesystem::path resolve(const std::filesystem::path& path) = 0;
};

/// A name beside `target` that nobody else uses: `target` with ".new-" and 16 random hexadecimal digits.
std::filesystem::path ownNameBeside(const std::filesystem::path& target);

/// Whether `name` is one that a writer of a file called `target` uses for the file that is to replace it: a name that
/// `ownNameBeside` makes, or that of release 0.1, without a number.
bool isTemporaryOf(std::string_view name, std::string_view target);

/// Creates the file at `path` and brings `content` to the disk, with the permissions of `like`. Where it fails, a part
/// of the content may be there.
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
