#include <utility>
#include <windows.h>

#include "support/fileLock.h"
#include "support/openFile_win32.h"

namespace {

constexpr DWORD readAndWrite = GENERIC_READ | GENERIC_WRITE;

/// The lock is on one byte far behind the end of the file: it keeps nobody from reading and writing the others.
OVERLAPPED lockedByte() {
  OVERLAPPED place{};
  place.OffsetHigh = 0x7FFFFFFF;
  return place;
}

class TopenFileLock final : public TfileLock {
 public:
  explicit TopenFileLock(Tfile file) : file_(std::move(file)) {}
  TopenFileLock(const TopenFileLock&) = delete;
  TopenFileLock& operator=(const TopenFileLock&) = delete;
  ~TopenFileLock() override {
    // The system would release it some time after the file is closed.
    OVERLAPPED place = lockedByte();
    UnlockFileEx(file_.get(), 0, 1, 0, &place);
  }

 private:
  Tfile file_;
};

TlockResult unlocked(const std::filesystem::path& path) {
  const DWORD error = GetLastError();
  const bool isHeld = error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
  const bool isBeingDeleted = error == ERROR_ACCESS_DENIED && isMissing();
  if (isHeld || isBeingDeleted) return {TlockResult::Tend::busy, nullptr, {}};
  return {TlockResult::Tend::unavailable, nullptr, loggedFailure("lock", path, static_cast<int>(error))};
}

struct TlockFile {
  Tfile file;
  DWORD lockType = LOCKFILE_EXCLUSIVE_LOCK;
};

/// Opens a file that could not be opened for writing: for reading, unless another program was only in the way for a
/// moment. Whoever locks a file that others may write must not share the lock.
TlockFile openProtected(const std::filesystem::path& path) {
  const bool isProtected = GetLastError() == ERROR_ACCESS_DENIED || GetLastError() == ERROR_WRITE_PROTECT;
  if (!isProtected) return {};
  Tfile file = retrying([&] { return openNoLink(path, readAndWrite, shareAll); });
  if (file || isMissing()) return {std::move(file)};
  return {retrying([&] { return openNoLink(path, GENERIC_READ, shareAll); }), 0};
}

/// Opens the file with as many rights as this user has.
TlockFile openToLock(const std::filesystem::path& path, bool create, const std::filesystem::path& like) {
  constexpr int attempts = 10;
  for (int i = 0; i < attempts; ++i) {
    Tfile file = openNoLink(path, readAndWrite, shareAll);
    if (file) return {std::move(file)};
    if (isMissing() && !create) break;
    if (!isMissing()) return openProtected(path);
    file = createLike(path, readAndWrite, shareAll, like);
    // If it exists by now, somebody else has just created it.
    if (file || GetLastError() != ERROR_FILE_EXISTS) return {std::move(file)};
  }
  return {};
}

bool isSameFile(const TfileInformation& one, const TfileInformation& other) {
  return one.dwVolumeSerialNumber == other.dwVolumeSerialNumber && one.nFileIndexHigh == other.nFileIndexHigh &&
         one.nFileIndexLow == other.nFileIndexLow;
}

}  // namespace

TlockResult tryFileLock(const std::filesystem::path& path, bool create, const std::filesystem::path& like) {
  constexpr int attempts = 10;
  for (int i = 0; i < attempts; ++i) {
    TlockFile opened = openToLock(path, create, like);
    if (!opened.file && isMissing() && !create) return {TlockResult::Tend::absent, nullptr, {}};
    const auto information = opened.file ? informationOf(opened.file) : std::nullopt;
    if (!information) return unlocked(path);
    OVERLAPPED place = lockedByte();
    const DWORD how = opened.lockType | LOCKFILE_FAIL_IMMEDIATELY;
    if (LockFileEx(opened.file.get(), how, 0, 1, 0, &place) == 0) return unlocked(path);
    auto lock = std::make_unique<TopenFileLock>(std::move(opened.file));
    // The file may have been renamed or removed before it was locked.
    const Tfile named = openNoLink(path, FILE_READ_ATTRIBUTES, shareAll);
    const auto found = named ? informationOf(named) : std::nullopt;
    if (found && isSameFile(*information, *found)) return {TlockResult::Tend::held, std::move(lock), {}};
    if (!found && !isMissing()) return unlocked(path);
  }
  return {TlockResult::Tend::busy, nullptr, {}};
}
