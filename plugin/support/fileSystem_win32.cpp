#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>
#include <windows.h>

#include "support/bufferedWriter.h"
#include "support/fileLock.h"
#include "support/openFile_win32.h"

namespace {

Tfile openFile(const std::filesystem::path& path, DWORD access, DWORD disposition, DWORD share = shareAll) {
  return retrying([&] { return openOnce(path, access, disposition, share); });
}

std::uint64_t lengthOf(const TfileInformation& information) {
  return joined(information.nFileSizeHigh, information.nFileSizeLow);
}

/// Reads to the end of the file, in one piece if `expected` is its length, but not much more than `most` bytes.
bool readAll(const Tfile& file, std::size_t expected, std::uint64_t most, std::string& content) {
  constexpr std::size_t mostAtOnce = 1U << 30U;
  content.resize(expected + 1);
  std::size_t length = 0;
  while (length <= most) {
    if (length == content.size()) content.resize(2 * content.size());
    const auto piece = static_cast<DWORD>(std::min(content.size() - length, mostAtOnce));
    DWORD got = 0;
    if (ReadFile(file.get(), content.data() + length, piece, &got, nullptr) == 0) return false;
    if (got == 0) break;
    length += got;
  }
  content.resize(length);
  return true;
}

/// The outcome of a system call that has just been made.
Toutcome check(bool succeeded, const char* operation, const std::filesystem::path& path) {
  if (succeeded) return {};
  return loggedFailure(operation, path, static_cast<int>(GetLastError()));
}

class TdiskWriter final : public TbufferedWriter {
 public:
  TdiskWriter(Tfile file, std::filesystem::path path) : file_(std::move(file)), path_(std::move(path)) {}

  Toutcome flush() override {
    if (Toutcome drained = drain(); !drained) return drained;
    return check(FlushFileBuffers(file_.get()) != 0, "flush", path_);
  }

  Toutcome close() override {
    Toutcome drained = drain();
    const Toutcome closed = check(CloseHandle(file_.release()) != 0, "close", path_);
    return drained ? closed : drained;
  }

 private:
  Toutcome put(std::string_view bytes) override {
    constexpr std::size_t mostAtOnce = 1U << 30U;
    while (!bytes.empty()) {
      DWORD written = 0;
      const auto piece = static_cast<DWORD>(std::min(bytes.size(), mostAtOnce));
      const bool done = WriteFile(file_.get(), bytes.data(), piece, &written, nullptr) != 0 && written > 0;
      if (!done) return check(false, "write", path_);
      bytes.remove_prefix(written);
    }
    return {};
  }

  Tfile file_;
  std::filesystem::path path_;
};

TreadResult failedRead(TreadResult::Tend end, const char* operation, const std::filesystem::path& path) {
  return {end, loggedFailure(operation, path, static_cast<int>(GetLastError()))};
}

TreadResult failedTooLarge(const std::filesystem::path& path) {
  SetLastError(ERROR_FILE_TOO_LARGE);
  return failedRead(TreadResult::Tend::tooLarge, "read", path);
}

TfileStamp stampOf(const TfileInformation& information) {
  constexpr std::uint64_t nanosecondsPerTick = 100;
  const FILETIME& modified = information.ftLastWriteTime;
  const std::uint64_t ticks = joined(modified.dwHighDateTime, modified.dwLowDateTime);
  return {information.dwVolumeSerialNumber, joined(information.nFileIndexHigh, information.nFileIndexLow),
          lengthOf(information), static_cast<std::int64_t>(ticks * nanosecondsPerTick)};
}

bool isFolder(const std::filesystem::path& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// Gives an open file another name in its folder.
bool renameOpen(const Tfile& file, const std::filesystem::path& to) {
  const std::wstring name = std::filesystem::absolute(to).native();
  const std::size_t nameBytes = name.size() * sizeof(wchar_t);
  std::vector<char> buffer(sizeof(FILE_RENAME_INFO) + nameBytes);
  auto* information = reinterpret_cast<FILE_RENAME_INFO*>(buffer.data());
  information->FileNameLength = static_cast<DWORD>(nameBytes);
  std::memcpy(information->FileName, name.data(), nameBytes);
  const auto size = static_cast<DWORD>(buffer.size());
  return SetFileInformationByHandle(file.get(), FileRenameInfo, information, size) != 0;
}

/// Deletes a file so that its name is free at once. Otherwise it keeps the name for as long as another program has it
/// open, and may even be opened, locked and written to by it, only to vanish later.
bool removeFile(const std::filesystem::path& path) {
  if (isFolder(path)) return DeleteFileW(path.c_str()) != 0;
  constexpr DWORD flags = FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT;
  const Tfile file = openOnce(path, DELETE, OPEN_EXISTING, shareAll, flags);
  if (file) renameOpen(file, ownNameBeside(path));
  return file != nullptr;
}

class TdiskFileSystem final : public TfileSystem {
 public:
  TreadResult read(const std::filesystem::path& path, std::string& content, std::uint64_t most) override {
    using enum TreadResult::Tend;
    Tfile file = openFile(path, GENERIC_READ, OPEN_EXISTING);
    if (!file && isMissing()) return {missing, {}};
    const auto information = file ? informationOf(file) : std::nullopt;
    if (!information) return failedRead(notOpened, "open", path);
    const std::uint64_t expected = lengthOf(*information);
    if (expected > most) return failedTooLarge(path);
    if (!readAll(file, static_cast<std::size_t>(expected), most, content)) return failedRead(readFailed, "read", path);
    if (content.size() > most) return failedTooLarge(path);
    return CloseHandle(file.release()) != 0 ? TreadResult() : failedRead(closeFailed, "close", path);
  }

  TstampResult stamp(const std::filesystem::path& path) override {
    using enum TstampResult::Tend;
    const Tfile file = openFile(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING);
    if (!file && isMissing()) return {absent, {}, {}};
    const auto information = file ? informationOf(file) : std::nullopt;
    if (information) return {found, stampOf(*information), {}};
    return {file ? notAFile : unknown, {}, loggedFailure("look at", path, static_cast<int>(GetLastError()))};
  }

  Toutcome checkWritable(const std::filesystem::path& path) override {
    // With exclusive access: a file that another program has open cannot be replaced, whatever it shares.
    constexpr DWORD shareNothing = 0;
    const Tfile file = openFile(path, GENERIC_WRITE | DELETE, OPEN_EXISTING, shareNothing);
    if (file) return check(informationOf(file).has_value(), "write", path);
    if (!isMissing()) return check(false, "write", path);
    const auto folder = path.parent_path().empty() ? "." : path.parent_path();
    return check(openOnce(folder, FILE_ADD_FILE, OPEN_EXISTING) != nullptr, "create", path);
  }

  Toutcome create(const std::filesystem::path& path, const std::filesystem::path& like,
                  std::unique_ptr<TfileWriter>& writer) override {
    Tfile file = createLike(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, like);
    if (!file) return check(false, "create", path);
    writer = std::make_unique<TdiskWriter>(std::move(file), path);
    return {};
  }

  Toutcome append(const std::filesystem::path& path, std::unique_ptr<TfileWriter>& writer) override {
    // Without the right to write anywhere, each write goes to the end of the file.
    constexpr DWORD access = FILE_APPEND_DATA | SYNCHRONIZE;
    Tfile file = retrying([&] { return openNoLink(path, access, shareAll); });
    if (!file) return check(false, "append to", path);
    writer = std::make_unique<TdiskWriter>(std::move(file), path);
    return {};
  }

  TlockResult lock(const std::filesystem::path& path, bool create, const std::filesystem::path& like,
                   std::chrono::milliseconds wait) override {
    return waitForFileLock(path, create, like, wait);
  }

  Toutcome rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
    const DWORD replace = isFolder(from) ? 0 : MOVEFILE_REPLACE_EXISTING;
    const DWORD how = replace | MOVEFILE_WRITE_THROUGH;
    return check(retrying([&] { return MoveFileExW(from.c_str(), to.c_str(), how) != 0; }), "rename", from);
  }

  Toutcome remove(const std::filesystem::path& path) override {
    return check(retrying([&] { return removeFile(path); }) || isMissing(), "remove", path);
  }

  Toutcome list(const std::filesystem::path& folder, std::vector<std::filesystem::path>& names) override {
    names.clear();
    WIN32_FIND_DATAW entry{};
    const HANDLE handle = FindFirstFileW((folder / "*").c_str(), &entry);
    if (handle == INVALID_HANDLE_VALUE) return check(isMissing() || GetLastError() == ERROR_DIRECTORY, "list", folder);
    const std::unique_ptr<void, decltype(&FindClose)> search(handle, FindClose);
    do {
      const std::filesystem::path name(entry.cFileName);
      if (name != "." && name != "..") names.push_back(name);
    } while (FindNextFileW(handle, &entry) != 0);
    return check(GetLastError() == ERROR_NO_MORE_FILES, "list", folder);
  }

  Toutcome makeFolder(const std::filesystem::path& folder) override {
    const bool made = CreateDirectoryW(folder.c_str(), nullptr) != 0;
    return check(made || (GetLastError() == ERROR_ALREADY_EXISTS && isFolder(folder)), "create", folder);
  }

  Toutcome removeFolder(const std::filesystem::path& folder) override {
    const bool removed = retrying([&] { return RemoveDirectoryW(folder.c_str()) != 0; }) || isMissing();
    return check(removed, "remove", folder);
  }

  Toutcome flushFolder(const std::filesystem::path& folder) override {
    const std::filesystem::path path = folder.empty() ? "." : folder;
    const Tfile entries = openOnce(path, FILE_ADD_FILE, OPEN_EXISTING);
    if (!entries) return check(false, "open", path);
    // A rename has already been written through. Not every file system supports this call for a folder.
    const bool flushed = FlushFileBuffers(entries.get()) != 0 || GetLastError() == ERROR_ACCESS_DENIED ||
                         GetLastError() == ERROR_INVALID_FUNCTION || GetLastError() == ERROR_INVALID_HANDLE;
    return check(flushed, "flush", path);
  }

  std::filesystem::path resolve(const std::filesystem::path& path) override {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return path;
    const Tfile file = openOnce(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING);
    std::wstring name(32768, L'\0');
    const DWORD length = GetFinalPathNameByHandleW(file.get(), name.data(), static_cast<DWORD>(name.size()), 0);
    if (length == 0 || length >= name.size()) return path;
    name.resize(length);
    return name;
  }
};

}  // namespace

TfileSystem& diskFileSystem() {
  static TdiskFileSystem fileSystem;
  return fileSystem;
}
