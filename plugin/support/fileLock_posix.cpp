#include <cerrno>
#include <fcntl.h>
#include <utility>

#include "support/fileLock.h"
#include "support/openFile_posix.h"

namespace {

using Tend = TlockResult::Tend;

/// The lock belongs to the open file: the system releases it when the file closes, at the latest with the process.
class TopenFileLock final : public TfileLock {
 public:
  explicit TopenFileLock(TopenFile file) : file_(std::move(file)) {}

 private:
  TopenFile file_;
};

TlockResult unavailable(const std::filesystem::path& path, int error) {
  return {Tend::unavailable, nullptr, loggedFailure("lock", path, error)};
}

struct TlockFile {
  TopenFile file;
  short lockType = F_WRLCK;
};

/// Opens the file with as many rights as this user has. Leaves the system's error in `errno`.
TlockFile openToLock(const std::filesystem::path& path, bool create, const std::filesystem::path& like) {
  constexpr int attempts = 10;
  for (int i = 0; i < attempts; ++i) {
    TopenFile file(path, O_RDWR | O_NOFOLLOW);
    if (file) return {std::move(file)};
    if (errno == EACCES || errno == EPERM || errno == EROFS) return {{path, O_RDONLY | O_NOFOLLOW}, F_RDLCK};
    if (errno != ENOENT || !create) break;
    TopenFile created = createLike(path, O_RDWR, like);
    // If it exists by now, somebody else has just created it.
    if (created || errno != EEXIST) return {std::move(created)};
  }
  return {};
}

bool lockOpenFile(const TlockFile& file) {
  struct flock whole {};
  whole.l_type = file.lockType;
  whole.l_whence = SEEK_SET;
  return retried([&] { return ::fcntl(file.file.descriptor(), F_OFD_SETLK, &whole); }) == 0;
}

}  // namespace

TlockResult tryFileLock(const std::filesystem::path& path, bool create, const std::filesystem::path& like) {
  constexpr int attempts = 10;
  for (int i = 0; i < attempts; ++i) {
    TlockFile file = openToLock(path, create, like);
    if (!file.file && meansAbsent() && !create) return {Tend::absent, nullptr, {}};
    struct stat locked {};
    struct stat named {};
    if (!file.file || !file.file.regularStatus(locked)) return unavailable(path, errno);
    if (!lockOpenFile(file)) {
      const bool isBusy = errno == EAGAIN;  // EACCES comes from the system's security rules
      return isBusy ? TlockResult{Tend::busy, nullptr, {}} : unavailable(path, errno);
    }
    const bool isThere = statusOfName(path, named);
    if (!isThere && !meansAbsent()) return unavailable(path, errno);
    // The file may have been renamed or removed before it was locked.
    if (isThere && isSameFile(locked, named)) {
      return {Tend::held, std::make_unique<TopenFileLock>(std::move(file.file)), {}};
    }
  }
  return {Tend::busy, nullptr, {}};
}
