#include <aclapi.h>
#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <windows.h>

#include "support/bufferedWriter.h"

namespace {

constexpr int attempts = 6;
constexpr DWORD pause = 15;  // milliseconds between two attempts
constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct ThandleCloser {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};

/// An open file; null if it could not be opened.
using Tfile = std::unique_ptr<void, ThandleCloser>;

Tfile openOnce(const std::filesystem::path& path, DWORD access, DWORD disposition, DWORD share = shareAll) {
  const HANDLE handle = CreateFileW(path.c_str(), access, share, nullptr, disposition,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  return Tfile(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

/// Whether the last operation failed because another program has the file open.
bool isHeldOpen() {
  constexpr std::array<DWORD, 4> held = {ERROR_SHARING_VIOLATION, ERROR_LOCK_VIOLATION, ERROR_ACCESS_DENIED,
                                         ERROR_USER_MAPPED_FILE};
  return std::find(held.begin(), held.end(), GetLastError()) != held.end();
}

bool isMissing() {
  return GetLastError() == ERROR_FILE_NOT_FOUND || GetLastError() == ERROR_PATH_NOT_FOUND;
}

/// Retries for a short while if another program has the file open: a virus scanner or a backup soon closes it.
template <typename Toperation>
auto retrying(Toperation operation) {
  auto result = operation();
  for (int i = 1; i < attempts && !result && isHeldOpen(); ++i) {
    Sleep(pause);
    result = operation();
  }
  return result;
}

Tfile openFile(const std::filesystem::path& path, DWORD access, DWORD disposition, DWORD share = shareAll) {
  return retrying([&] { return openOnce(path, access, disposition, share); });
}

/// What the system knows about a file on a disk; nothing for folders, devices and pipes.
std::optional<BY_HANDLE_FILE_INFORMATION> informationOf(const Tfile& file) {
  BY_HANDLE_FILE_INFORMATION information{};
  if (GetFileType(file.get()) != FILE_TYPE_DISK) return std::nullopt;
  if (GetFileInformationByHandle(file.get(), &information) == 0) return std::nullopt;
  if ((information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return std::nullopt;
  return information;
}

std::uint64_t joined(DWORD high, DWORD low) {
  return (std::uint64_t{high} << 32U) | low;
}

std::uint64_t lengthOf(const BY_HANDLE_FILE_INFORMATION& information) {
  return joined(information.nFileSizeHigh, information.nFileSizeLow);
}

/// Reads to the end of the file, in one piece if `expected` is its length.
bool readAll(const Tfile& file, std::size_t expected, std::string& content) {
  constexpr std::size_t mostAtOnce = 1U << 30U;
  content.resize(expected + 1);
  std::size_t length = 0;
  for (;;) {
    if (length == content.size()) content.resize(2 * content.size());
    const auto room = static_cast<DWORD>(std::min(content.size() - length, mostAtOnce));
    DWORD got = 0;
    if (ReadFile(file.get(), content.data() + length, room, &got, nullptr) == 0) return false;
    if (got == 0) break;
    length += got;
  }
  content.resize(length);
  return true;
}

/// Gives a file the access list of another. If this user may not, the save goes on without.
void copyPermissions(const std::filesystem::path& from, std::wstring to) {
  PSECURITY_DESCRIPTOR found = nullptr;
  PACL list = nullptr;
  std::wstring name = from.native();
  if (GetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &list, nullptr,
                            &found) != ERROR_SUCCESS) {
    return;
  }
  const std::unique_ptr<void, decltype(&LocalFree)> owner(found, LocalFree);
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  if (GetSecurityDescriptorControl(found, &control, &revision) == 0) return;
  const bool isProtected = (control & SE_DACL_PROTECTED) != 0;  // inherits nothing from its folder
  const DWORD inheritance = isProtected ? PROTECTED_DACL_SECURITY_INFORMATION : UNPROTECTED_DACL_SECURITY_INFORMATION;
  SetNamedSecurityInfoW(to.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inheritance, nullptr, nullptr, list,
                        nullptr);
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

class TdiskFileSystem final : public TfileSystem {
 public:
  TreadResult read(const std::filesystem::path& path, std::string& content) override {
    using enum TreadResult::Tend;
    Tfile file = openFile(path, GENERIC_READ, OPEN_EXISTING);
    if (!file && isMissing()) return {missing, {}};
    const auto information = file ? informationOf(file) : std::nullopt;
    if (file && !information) SetLastError(ERROR_FILE_INVALID);
    if (!information) return failedRead(notOpened, "open", path);
    if (!readAll(file, static_cast<std::size_t>(lengthOf(*information)), content)) {
      return failedRead(readFailed, "read", path);
    }
    return CloseHandle(file.release()) != 0 ? TreadResult() : failedRead(closeFailed, "close", path);
  }

  std::optional<TfileStamp> stamp(const std::filesystem::path& path) override {
    const Tfile file = openOnce(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING);
    const auto information = file ? informationOf(file) : std::nullopt;
    if (!information) return std::nullopt;
    constexpr std::uint64_t nanosecondsPerTick = 100;
    const FILETIME& modified = information->ftLastWriteTime;
    return TfileStamp{
        joined(information->nFileIndexHigh, information->nFileIndexLow), lengthOf(*information),
        static_cast<std::int64_t>(joined(modified.dwHighDateTime, modified.dwLowDateTime) * nanosecondsPerTick)};
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
    Tfile file = openFile(path, GENERIC_WRITE, CREATE_ALWAYS, FILE_SHARE_READ | FILE_SHARE_DELETE);
    if (!file) return check(false, "create", path);
    copyPermissions(like, path.native());
    writer = std::make_unique<TdiskWriter>(std::move(file), path);
    return {};
  }

  Toutcome rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
    constexpr DWORD how = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    return check(retrying([&] { return MoveFileExW(from.c_str(), to.c_str(), how) != 0; }), "rename", from);
  }

  Toutcome remove(const std::filesystem::path& path) override {
    const bool removed = retrying([&] { return DeleteFileW(path.c_str()) != 0; }) || isMissing();
    return check(removed, "remove", path);
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
