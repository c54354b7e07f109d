#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

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

/// Reads to the end of the file, in one piece if `expected` is its length.
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

/// The outcome of a system call that has just been made.
Toutcome check(bool succeeded, const char* operation, const std::filesystem::path& path) {
  if (succeeded) return {};
  return loggedFailure(operation, path, errno);
}

TfileStamp stampOf(const struct stat& status) {
  return {status.st_ino, static_cast<std::uint64_t>(status.st_size),
          std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec};
}

class TdiskWriter final : public TbufferedWriter {
 public:
  TdiskWriter(int descriptor, std::filesystem::path path) : descriptor_(descriptor), path_(std::move(path)) {}
  TdiskWriter(const TdiskWriter&) = delete;
  TdiskWriter& operator=(const TdiskWriter&) = delete;
  ~TdiskWriter() override {
    if (descriptor_ >= 0) ::close(descriptor_);
  }

  Toutcome flush() override {
    if (Toutcome drained = drain(); !drained) return drained;
    return check(::fsync(descriptor_) == 0, "flush", path_);
  }

  Toutcome close() override {
    Toutcome drained = drain();
    const Toutcome closed = check(::close(std::exchange(descriptor_, -1)) == 0, "close", path_);
    return drained ? closed : drained;
  }

 private:
  Toutcome put(std::string_view bytes) override {
    if (!writeAll(descriptor_, bytes)) return loggedFailure("write", path_, errno);
    // Lets the disk work while the next piece is made; `flush` reports what came of it.
    ::sync_file_range(descriptor_, 0, 0, SYNC_FILE_RANGE_WRITE);
    return {};
  }

  int descriptor_;
  std::filesystem::path path_;
};

/// Gives a new file the owner, group and permissions of another, as far as this user may: a member of the file's group
/// can keep the group, but not the owner.
void takeOver(int descriptor, const struct stat& from) {
  if (::fchown(descriptor, from.st_uid, from.st_gid) != 0) {
    constexpr auto sameOwner = static_cast<uid_t>(-1);
    if (::fchown(descriptor, sameOwner, from.st_gid) != 0) errno = 0;
  }
  if (::fchmod(descriptor, from.st_mode & 07777) != 0) errno = 0;
}

TreadResult failedRead(TreadResult::Tend end, const char* operation, const std::filesystem::path& path, int error) {
  return {end, loggedFailure(operation, path, error)};
}

class TdiskFileSystem final : public TfileSystem {
 public:
  TreadResult read(const std::filesystem::path& path, std::string& content) override {
    using enum TreadResult::Tend;
    struct stat status {};
    // Non-blocking, so that a pipe with a data file's name cannot hang the host.
    const int descriptor = openRetrying(path, O_RDONLY | O_NONBLOCK);
    if (descriptor < 0) {
      if (errno == ENOENT || errno == ENOTDIR) return {missing, {}};
      return failedRead(notOpened, "open", path, errno);
    }
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
      ::close(descriptor);
      return failedRead(notOpened, "open", path, EINVAL);
    }
    const bool whole = readAll(descriptor, static_cast<std::size_t>(status.st_size), content);
    const int error = errno;
    const bool closed = ::close(descriptor) == 0;
    if (!whole) return failedRead(readFailed, "read", path, error);
    return closed ? TreadResult() : failedRead(closeFailed, "close", path, errno);
  }

  std::optional<TfileStamp> stamp(const std::filesystem::path& path) override {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return stampOf(status);
  }

  Toutcome checkWritable(const std::filesystem::path& path) override {
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0) {
      if (!S_ISREG(status.st_mode)) errno = EINVAL;
      return check(S_ISREG(status.st_mode) && ::access(path.c_str(), W_OK) == 0, "write", path);
    }
    const auto folder = path.parent_path().empty() ? std::filesystem::path(".") : path.parent_path();
    return check(errno == ENOENT && ::access(folder.c_str(), W_OK) == 0, "create", path);
  }

  Toutcome create(const std::filesystem::path& path, const std::filesystem::path& like,
                  std::unique_ptr<TfileWriter>& writer) override {
    const int descriptor = openRetrying(path, O_WRONLY | O_CREAT | O_TRUNC, 0666);
    if (descriptor < 0) return loggedFailure("create", path, errno);
    struct stat status {};
    if (::stat(like.c_str(), &status) == 0) takeOver(descriptor, status);
    writer = std::make_unique<TdiskWriter>(descriptor, path);
    return {};
  }

  Toutcome rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
    return check(std::rename(from.c_str(), to.c_str()) == 0, "rename", from);
  }

  Toutcome remove(const std::filesystem::path& path) override {
    return check(::unlink(path.c_str()) == 0 || errno == ENOENT, "remove", path);
  }

  Toutcome flushFolder(const std::filesystem::path& folder) override {
    const auto path = folder.empty() ? std::filesystem::path(".") : folder;
    const int descriptor = openRetrying(path, O_RDONLY | O_DIRECTORY);
    if (descriptor < 0) return loggedFailure("open", path, errno);
    Toutcome flushed = check(::fsync(descriptor) == 0, "flush", path);
    const Toutcome closed = check(::close(descriptor) == 0, "close", path);
    return flushed ? closed : flushed;
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
