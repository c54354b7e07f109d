#pragma once

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

/// Makes a system call, again if a signal interrupts it.
template <typename Tcall>
auto retried(Tcall call) {
  auto result = call();
  while (result == -1 && errno == EINTR) result = call();
  return result;
}

/// An open file or folder; closed with this object. Empty where it could not be opened.
class TopenFile {
 public:
  TopenFile() = default;
  /// Never waits for the other end of a pipe, and never makes a terminal the process's own.
  TopenFile(const std::filesystem::path& path, int flags, mode_t mode = 0)
      : descriptor_(retried([&] { return ::open(path.c_str(), flags | alwaysSet, mode); })) {}
  TopenFile(TopenFile&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  TopenFile(const TopenFile&) = delete;
  TopenFile& operator=(const TopenFile&) = delete;
  TopenFile& operator=(TopenFile&&) = delete;
  ~TopenFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }

  explicit operator bool() const { return descriptor_ >= 0; }
  int descriptor() const { return descriptor_; }

  bool status(struct stat& found) const {
    return retried([&] { return ::fstat(descriptor_, &found); }) == 0;
  }

  /// Gives the status of a regular file. Fails with `EINVAL` for anything else.
  bool regularStatus(struct stat& found) const {
    if (!status(found)) return false;
    errno = EINVAL;
    return S_ISREG(found.st_mode);
  }

  /// Returns whether it succeeded. An interrupted call has closed the file, too.
  bool close() { return ::close(std::exchange(descriptor_, -1)) == 0 || errno == EINTR; }

 private:
  static constexpr int alwaysSet = O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

  int descriptor_ = -1;
};

/// The status of what `path` leads to.
inline bool statusAt(const std::filesystem::path& path, struct stat& found) {
  return retried([&] { return ::stat(path.c_str(), &found); }) == 0;
}

/// The status of what has the name `path`, which may be a link.
inline bool statusOfName(const std::filesystem::path& path, struct stat& found) {
  return retried([&] { return ::lstat(path.c_str(), &found); }) == 0;
}

inline bool isSameFile(const struct stat& one, const struct stat& other) {
  return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// Whether the last system call failed because nothing has that name.
inline bool meansAbsent() {
  return errno == ENOENT || errno == ENOTDIR;
}

/// Creates a file, which must not exist, and opens it with `access`. Gives it the owner, group and permissions of
/// `like` as far as this user may; where `like` does not exist, those of any new file. Fails with the system's `errno`.
TopenFile createLike(const std::filesystem::path& path, int access, const std::filesystem::path& like);
