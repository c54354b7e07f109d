#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

// A library to be preloaded: makes calls for files below the folder EQREC_FAULT_BELOW fail, or kills the process there.
// EQREC_FAULT is "FUNCTION NUMBER ERROR SPAN": the NUMBERth call of FUNCTION, or of "any", fails with ERROR ("KILL"
// kills), and with SPAN "kind" all later calls of the same function, with "all" all later calls.

namespace {

class Tfault {
 public:
  Tfault() {
    const char* const fault = std::getenv("EQREC_FAULT");
    const char* const folder = std::getenv("EQREC_FAULT_BELOW");
    if (fault == nullptr || folder == nullptr) return;
    std::istringstream(fault) >> function_ >> number_ >> error_ >> span_;
    folder_ = folder;
  }

  bool isBelow(const char* path) const {
    return !folder_.empty() && path != nullptr && std::string_view(path).starts_with(folder_);
  }
  bool isBelow(int descriptor) const {
    return descriptor >= 0 && descriptor < static_cast<int>(below_.size()) && below_[static_cast<unsigned>(descriptor)];
  }
  /// What a call for a new descriptor has returned.
  int opened(int descriptor, bool below) {
    if (descriptor >= 0 && descriptor < static_cast<int>(below_.size())) {
      below_[static_cast<unsigned>(descriptor)] = below;
    }
    return descriptor;
  }

  /// Whether this call is to fail. Sets `errno`.
  bool hits(std::string_view function, bool below) {
    if (!below) return false;
    if (function_ == "any" || function == function_) ++count_;
    if (count_ == number_ && failing_.empty()) return start(function);
    const bool goesOn = !failing_.empty() && (span_ == "all" || (span_ == "kind" && function == failing_));
    if (goesOn) errno = code();
    return goesOn;
  }

 private:
  bool start(std::string_view function) {
    failing_ = function;
    dprintf(STDERR_FILENO, "fault %s\n", failing_.c_str());
    if (error_ == "KILL") static_cast<void>(raise(SIGKILL));
    errno = code();
    return true;
  }
  int code() const { return error_ == "EIO" ? EIO : error_ == "EINTR" ? EINTR : EACCES; }

  std::string function_;
  std::string error_;
  std::string span_;
  std::string folder_;
  std::string failing_;
  int number_ = 0;
  int count_ = 0;
  std::array<bool, 1024> below_{};
};

Tfault& fault() {
  static Tfault only;
  return only;
}

}  // namespace

#define SYSTEMS(function) reinterpret_cast<decltype(&(function))>(dlsym(RTLD_NEXT, #function))

/// Defines a call that fails with `failure` when it is to fail. The last arguments are those to pass on.
#define FAULTY(result, function, parameters, concerned, failure, ...)          \
  result function parameters {                                                 \
    if (fault().hits(#function, fault().isBelow(concerned))) return (failure); \
    return SYSTEMS(function)(__VA_ARGS__);                                     \
  }

extern "C" {

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const auto mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  if (fault().hits("open", fault().isBelow(path))) return -1;
  return fault().opened(SYSTEMS(open)(path, flags, mode), fault().isBelow(path));
}
int openat(int folder, const char* path, int flags, ...) {
  if (fault().hits("openat", fault().isBelow(path))) return -1;
  return fault().opened(SYSTEMS(openat)(folder, path, flags), fault().isBelow(path));
}
int close(int file) {
  const bool below = fault().isBelow(file);
  fault().opened(file, false);
  const int result = SYSTEMS(close)(file);
  return fault().hits("close", below) ? -1 : result;  // the file is closed all the same
}
int fcntl(int file, int command, ...) {
  va_list rest;
  va_start(rest, command);
  void* const argument = va_arg(rest, void*);
  va_end(rest);
  if (fault().hits("fcntl", fault().isBelow(file))) return -1;
  return SYSTEMS(fcntl)(file, command, argument);
}
FAULTY(ssize_t, read, (int file, void* bytes, size_t count), file, -1, file, bytes, count)
FAULTY(ssize_t, write, (int file, const void* bytes, size_t count), file, -1, file, bytes, count)
FAULTY(int, fsync, (int file), file, -1, file)
FAULTY(int, fstat, (int file, struct stat* status) noexcept, file, -1, file, status)
FAULTY(int, stat, (const char* path, struct stat* status) noexcept, path, -1, path, status)
FAULTY(int, lstat, (const char* path, struct stat* status) noexcept, path, -1, path, status)
FAULTY(int, access, (const char* path, int mode) noexcept, path, -1, path, mode)
FAULTY(int, fchmod, (int file, mode_t mode) noexcept, file, -1, file, mode)
FAULTY(int, fchown, (int file, uid_t owner, gid_t group) noexcept, file, -1, file, owner, group)
FAULTY(int, rename, (const char* from, const char* to) noexcept, from, -1, from, to)
FAULTY(int, unlink, (const char* path) noexcept, path, -1, path)
FAULTY(int, mkdir, (const char* path, mode_t mode) noexcept, path, -1, path, mode)
FAULTY(int, rmdir, (const char* path) noexcept, path, -1, path)
FAULTY(ssize_t, readlink, (const char* path, char* text, size_t size) noexcept, path, -1, path, text, size)
FAULTY(char*, realpath, (const char* path, char* text) noexcept, path, nullptr, path, text)
FAULTY(DIR*, opendir, (const char* path), path, nullptr, path)
FAULTY(DIR*, fdopendir, (int file), file, nullptr, file)
FAULTY(dirent*, readdir, (DIR * folder), dirfd(folder), nullptr, folder)
}
