#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "support/bufferedWriter.h"

namespace {

int openRetrying(const std::filesystem::path& path, int flags, mode_t mode = 0) {
  int descriptor = -1;
  do descriptor = ::open(path.c_str(), flags | O_CLOEXEC, mode);
  while (descriptor < 0 && errno == EINTR);
  return descriptor;
}

bool writeAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

/// Reads to the end of the file, in one piece when its length was told right.
bool readAll(int descriptor, std::size_t expected, std::string& content) {
  content.resize(expected + 1);
  std::size_t length = 0;
  for (;;) {
    if (length == content.size()) content.resize(2 * content.size());
    const ssize_t got = ::read(descriptor, content.data() + length, content.size() - length);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return false;
    if (got == 0) break;
    length += static_cast<std::size_t>(got);
  }
  content.resize(length);
  return true;
}

TfileStamp stampOf(const struct stat& status) {
  return {status.st_ino, static_cast<std::uint64_t>(status.st_size),
          std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec};
}

class TdiskWriter final : public TbufferedWriter {
 public:
  explicit TdiskWriter(int descriptor) : descriptor_(descriptor) {}
  TdiskWriter(const TdiskWriter&) = delete;
  TdiskWriter& operator=(const TdiskWriter&) = delete;
  ~TdiskWriter() override {
    if (descriptor_ >= 0) ::close(descriptor_);
  }

  bool flush() override { return drain() && ::fsync(descriptor_) == 0; }

  bool close() override {
    const bool drained = drain();
    const int descriptor = descriptor_;
    descriptor_ = -1;
    return ::close(descriptor) == 0 && drained;
  }

 private:
  bool put(std::string_view bytes) override {
    const bool written = writeAll(descriptor_, bytes);
    // Lets the disk work while the next piece is made; `flush` tells what came of it.
    if (written) ::sync_file_range(descriptor_, 0, 0, SYNC_FILE_RANGE_WRITE);
    return written;
  }

  int descriptor_;
};

class TdiskFileSystem final : public TfileSystem {
 public:
  TreadResult read(const std::filesystem::path& path, std::string& content) override {
    struct stat status {};
    // Not blocking, so that a pipe in a data file's place cannot hang the host.
    const int descriptor = openRetrying(path, O_RDONLY | O_NONBLOCK);
    if (descriptor < 0) return TreadResult::notOpened;
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
      ::close(descriptor);
      return TreadResult::notOpened;
    }
    const bool done = readAll(descriptor, static_cast<std::size_t>(status.st_size), content);
    if (::close(descriptor) != 0 && done) return TreadResult::closeFailed;
    return done ? TreadResult::done : TreadResult::readFailed;
  }

  std::optional<TfileStamp> stamp(const std::filesystem::path& path) override {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return stampOf(status);
  }

  bool isWritable(const std::filesystem::path& path) override {
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0) return S_ISREG(status.st_mode) && ::access(path.c_str(), W_OK) == 0;
    return errno == ENOENT && ::access(path.parent_path().empty() ? "." : path.parent_path().c_str(), W_OK) == 0;
  }

  std::unique_ptr<TfileWriter> create(const std::filesystem::path& path, const std::filesystem::path& like) override {
    const int descriptor = openRetrying(path, O_WRONLY | O_CREAT | O_TRUNC, 0666);
    if (descriptor < 0) return nullptr;
    struct stat status {};
    if (::stat(like.c_str(), &status) == 0) {
      // An owner that this user may not give away is no reason to refuse the save; permissions can always be given.
      if (::fchown(descriptor, status.st_uid, status.st_gid) != 0) errno = 0;
      if (::fchmod(descriptor, status.st_mode & 07777) != 0) errno = 0;
    }
    return std::make_unique<TdiskWriter>(descriptor);
  }

  bool rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
    return std::rename(from.c_str(), to.c_str()) == 0;
  }

  bool remove(const std::filesystem::path& path) override { return ::unlink(path.c_str()) == 0 || errno == ENOENT; }

  bool flushFolder(const std::filesystem::path& folder) override {
    const int descriptor = openRetrying(folder.empty() ? "." : folder, O_RDONLY | O_DIRECTORY);
    if (descriptor < 0) return false;
    const bool flushed = ::fsync(descriptor) == 0;
    return ::close(descriptor) == 0 && flushed;
  }

  std::filesystem::path resolve(const std::filesystem::path& path) override {
    constexpr int mostLinks = 40;
    std::filesystem::path target = path;
    std::error_code error;
    for (int i = 0; i < mostLinks && std::filesystem::is_symlink(target, error); ++i) {
      const auto link = std::filesystem::read_symlink(target, error);
      if (error) break;
      target = target.parent_path() / link;
    }
    return target;
  }
};

}  // namespace

TfileSystem& diskFileSystem() {
  static TdiskFileSystem fileSystem;
  return fileSystem;
}
