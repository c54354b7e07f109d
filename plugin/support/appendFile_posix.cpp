#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>

#include "support/appendFile.h"
#include "support/openFile_posix.h"

namespace {

/// A regular file, open for appending.
class TappendedFile {
 public:
  TappendedFile(const std::filesystem::path& path, int flags)
      : file_(path, O_WRONLY | O_APPEND | flags, 0666), isRegular_(file_ && file_.regularStatus(status_)) {}

  explicit operator bool() const { return isRegular_; }
  int descriptor() const { return file_.descriptor(); }
  std::uint64_t size() const { return static_cast<std::uint64_t>(status_.st_size); }

  /// Whether `path` still names this file.
  bool isAt(const std::filesystem::path& path) const {
    struct stat named {};
    return statusAt(path, named) && isSameFile(named, status_);
  }

 private:
  struct stat status_ {};
  TopenFile file_;
  bool isRegular_;
};

}  // namespace

TappendResult appendToFile(const std::filesystem::path& path, std::string_view bytes, std::uint64_t mostBytes) {
  const TappendedFile file(path, O_CREAT);
  if (!file) return TappendResult::failed;
  if (file.size() + bytes.size() > mostBytes) return TappendResult::full;
  const ssize_t written = retried([&] { return ::write(file.descriptor(), bytes.data(), bytes.size()); });
  return written == static_cast<ssize_t>(bytes.size()) ? TappendResult::done : TappendResult::failed;
}

void turnFileOver(const std::filesystem::path& path, const std::filesystem::path& older, std::uint64_t bytes) {
  const TappendedFile file(path, 0);
  if (!file || file.size() <= bytes) return;
  // Closing the file unlocks it. Whoever gets the lock later finds a new file at the path, and leaves it there.
  if (::flock(file.descriptor(), LOCK_EX | LOCK_NB) == 0 && file.isAt(path)) std::rename(path.c_str(), older.c_str());
}
