#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/appendFile.h"

namespace {

/// A regular file, open for appending.
class TopenFile {
 public:
  TopenFile(const std::filesystem::path& path, int flags) {
    // Without blocking: a pipe in the file's place must not hang the program.
    descriptor_ = ::open(path.c_str(), O_WRONLY | O_APPEND | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | flags, 0666);
    isRegular_ = descriptor_ >= 0 && ::fstat(descriptor_, &status_) == 0 && S_ISREG(status_.st_mode);
  }
  TopenFile(const TopenFile&) = delete;
  TopenFile& operator=(const TopenFile&) = delete;
  ~TopenFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }

  explicit operator bool() const { return isRegular_; }
  int descriptor() const { return descriptor_; }
  std::uint64_t size() const { return static_cast<std::uint64_t>(status_.st_size); }

  /// Whether `path` still names this file.
  bool isAt(const std::filesystem::path& path) const {
    struct stat named {};
    return ::stat(path.c_str(), &named) == 0 && named.st_ino == status_.st_ino && named.st_dev == status_.st_dev;
  }

 private:
  int descriptor_ = -1;
  bool isRegular_ = false;
  struct stat status_ {};
};

}  // namespace

TappendResult appendToFile(const std::filesystem::path& path, std::string_view bytes, std::uint64_t mostBytes) {
  const TopenFile file(path, O_CREAT);
  if (!file) return TappendResult::failed;
  if (file.size() + bytes.size() > mostBytes) return TappendResult::full;
  ssize_t written = -1;
  do written = ::write(file.descriptor(), bytes.data(), bytes.size());
  while (written < 0 && errno == EINTR);
  return written == static_cast<ssize_t>(bytes.size()) ? TappendResult::done : TappendResult::failed;
}

void turnFileOver(const std::filesystem::path& path, const std::filesystem::path& older, std::uint64_t bytes) {
  const TopenFile file(path, 0);
  if (!file || file.size() <= bytes) return;
  // Closing the file unlocks it. Whoever gets the lock later finds a new file at the path, and leaves it there.
  if (::flock(file.descriptor(), LOCK_EX | LOCK_NB) == 0 && file.isAt(path)) std::rename(path.c_str(), older.c_str());
}
