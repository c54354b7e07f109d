#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "support/bufferedWriter.h"
#include "support/fileLock.h"
#include "support/openFile_posix.h"
#include "support/paths.h"

namespace {

bool writeAll(const TopenFile& file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = retried([&] { return ::write(file.descriptor(), bytes.data(), bytes.size()); });
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

/// Reads to the end of the file, in one piece if `expected` is its length, but not much more than `most` bytes.
bool readAll(const TopenFile& file, std::size_t expected, std::uint64_t most, std::string& content) {
  content.resize(expected + 1);
  std::size_t length = 0;
  while (length <= most) {
    if (length == content.size()) content.resize(2 * content.size());
    const ssize_t got =
        retried([&] { return ::read(file.descriptor(), content.data() + length, content.size() - length); });
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

std::int64_t nanoseconds(const struct timespec& time) {
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

TfileStamp stampOf(const struct stat& status) {
  return {status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size), nanoseconds(status.st_mtim),
          nanoseconds(status.st_ctim)};
}

class TdiskWriter final : public TbufferedWriter {
 public:
  TdiskWriter(TopenFile file, std::filesystem::path path) : file_(std::move(file)), path_(std::move(path)) {}

  Toutcome flush() override {
    if (Toutcome drained = drain(); !drained) return drained;
    return check(retried([&] { return ::fsync(file_.descriptor()); }) == 0, "flush", path_);
  }

  Toutcome close() override {
    Toutcome drained = drain();
    const Toutcome closed = check(file_.close(), "close", path_);
    return drained ? closed : drained;
  }

 private:
  Toutcome put(std::string_view bytes) override {
    constexpr std::size_t largePiece = 65536;
    if (!writeAll(file_, bytes)) return loggedFailure("write", path_, errno);
    // Lets the disk work while the next piece is made; `flush` reports what came of it.
    if (bytes.size() > largePiece) ::sync_file_range(file_.descriptor(), 0, 0, SYNC_FILE_RANGE_WRITE);
    return {};
  }

  TopenFile file_;
  std::filesystem::path path_;
};

TreadResult failedRead(TreadResult::Tend end, const char* operation, const std::filesystem::path& path, int error) {
  return {end, loggedFailure(operation, path, error)};
}

std::filesystem::path folderOf(const std::filesystem::path& path) {
  return path.parent_path().empty() ? std::filesystem::path(".") : path.parent_path();
}

/// What the link at `path` holds; empty if there is no link. Tried again after a failure: whoever takes a link for a
/// file replaces the link.
std::filesystem::path linkAt(const std::filesystem::path& path) {
  constexpr int attempts = 3;
  std::array<char, PATH_MAX> text{};
  ssize_t length = -1;
  for (int i = 0; i < attempts && length < 0; ++i) {
    length = retried([&] { return ::readlink(path.c_str(), text.data(), text.size()); });
    if (length < 0 && (errno == EINVAL || meansAbsent())) return {};
  }
  if (length < 0) loggedFailure("follow", path, errno);
  return {text.data(), text.data() + std::max<ssize_t>(length, 0)};
}

class TdiskFileSystem final : public TfileSystem {
 public:
  TreadResult read(const std::filesystem::path& path, std::string& content, std::uint64_t most) override {
    using enum TreadResult::Tend;
    struct stat status {};
    TopenFile file(path, O_RDONLY);
    if (!file && meansAbsent()) return {missing, {}};
    if (!file || !file.regularStatus(status)) return failedRead(notOpened, "open", path, errno);
    const auto expected = static_cast<std::uint64_t>(status.st_size);
    if (expected > most) return failedRead(tooLarge, "read", path, EFBIG);
    if (!readAll(file, expected, most, content)) return failedRead(readFailed, "read", path, errno);
    if (content.size() > most) return failedRead(tooLarge, "read", path, EFBIG);
    return file.close() ? TreadResult() : failedRead(closeFailed, "close", path, errno);
  }

  TstampResult stamp(const std::filesystem::path& path) override {
    using enum TstampResult::Tend;
    struct stat status {};
    const bool isThere = statusAt(path, status);
    if (!isThere && meansAbsent()) return {absent, {}, {}};
    if (isThere && S_ISREG(status.st_mode)) return {found, stampOf(status), {}};
    return {isThere ? notAFile : unknown, {}, loggedFailure("look at", path, isThere ? EINVAL : errno)};
  }

  Toutcome checkWritable(const std::filesystem::path& path) override {
    struct stat status {};
    const bool isThere = statusAt(path, status);
    if (isThere && !S_ISREG(status.st_mode)) return loggedFailure("write", path, EINVAL);
    if (!isThere && errno != ENOENT) return loggedFailure("create", path, errno);
    const auto written = isThere ? path : folderOf(path);
    const bool writable = retried([&] { return ::access(written.c_str(), W_OK); }) == 0;
    return check(writable, isThere ? "write" : "create", path);
  }

  Toutcome create(const std::filesystem::path& path, const std::filesystem::path& like,
                  std::unique_ptr<TfileWriter>& writer) override {
    TopenFile file = createLike(path, O_WRONLY, like);
    if (!file) return loggedFailure("create", path, errno);
    writer = std::make_unique<TdiskWriter>(std::move(file), path);
    return {};
  }

  Toutcome append(const std::filesystem::path& path, std::unique_ptr<TfileWriter>& writer) override {
    struct stat status {};
    TopenFile file(path, O_WRONLY | O_APPEND | O_NOFOLLOW);
    if (!file || !file.regularStatus(status)) return loggedFailure("append to", path, errno);
    writer = std::make_unique<TdiskWriter>(std::move(file), path);
    return {};
  }

  TlockResult lock(const std::filesystem::path& path, bool create, const std::filesystem::path& like,
                   std::chrono::milliseconds wait) override {
    return waitForFileLock(path, create, like, wait);
  }

  Toutcome rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
    // The system would replace an empty folder.
    struct stat replaced {};
    if (statusOfName(to, replaced) && S_ISDIR(replaced.st_mode)) return loggedFailure("rename", from, EEXIST);
    return check(retried([&] { return std::rename(from.c_str(), to.c_str()); }) == 0, "rename", from);
  }

  Toutcome remove(const std::filesystem::path& path) override {
    const bool removed = retried([&] { return ::unlink(path.c_str()); }) == 0 || meansAbsent();
    return check(removed, "remove", path);
  }

  Toutcome list(const std::filesystem::path& folder, std::vector<std::filesystem::path>& names) override {
    const auto path = folder.empty() ? std::filesystem::path(".") : folder;
    const std::error_code error = namesInFolder(path, names);
    const bool isAbsent = error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
    return !error || isAbsent ? Toutcome() : loggedFailure("list", path, error.value());
  }

  Toutcome makeFolder(const std::filesystem::path& folder) override {
    struct stat found {};
    if (retried([&] { return ::mkdir(folder.c_str(), 0777); }) == 0) return {};
    const int error = errno;
    const bool isThere = error == EEXIST && statusAt(folder, found) && S_ISDIR(found.st_mode);
    return isThere ? Toutcome() : loggedFailure("create", folder, error);
  }

  Toutcome removeFolder(const std::filesystem::path& folder) override {
    const bool removed = retried([&] { return ::rmdir(folder.c_str()); }) == 0 || errno == ENOENT;
    return check(removed, "remove", folder);
  }

  Toutcome flushFolder(const std::filesystem::path& folder) override {
    const auto path = folder.empty() ? std::filesystem::path(".") : folder;
    TopenFile entries(path, O_RDONLY | O_DIRECTORY);
    if (!entries) return loggedFailure("open", path, errno);
    Toutcome flushed = check(retried([&] { return ::fsync(entries.descriptor()); }) == 0, "flush", path);
    const Toutcome closed = check(entries.close(), "close", path);
    return flushed ? closed : flushed;
  }

  std::filesystem::path resolve(const std::filesystem::path& path) override {
    constexpr int mostLinks = 40;
    std::filesystem::path target = path;
    for (int i = 0; i < mostLinks; ++i) {
      const std::filesystem::path link = linkAt(target);
      if (link.empty()) break;
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
