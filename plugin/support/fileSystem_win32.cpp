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

/// An open file; null where it was not opened.
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

/// Tries again for a short while where another program has the file open: a virus scanner or a backup soon lets go.
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

/// What the system knows of a file on a disk; nothing for folders, devices and pipes.
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

/// Reads to the end of the file, in one piece when its length was told right.
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

/// Gives a file the access list of another. One that this user may not give is no reason to refuse the save.
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
  const bool isProtected = (control & SE_DACL_PROTECTED) != 0;  // it takes nothing over from its folder
  const DWORD inheritance = isProtected ? PROTECTED_DACL_SECURITY_INFORMATION : UNPROTECTED_DACL_SECURITY_INFORMATION;
  SetNamedSecurityInfoW(to.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inheritance, nullptr, nullptr, list,
                        nullptr);
}

class TdiskWriter final : public TbufferedWriter {
 public:
  explicit TdiskWriter(Tfile file) : file_(std::move(file)) {}

  bool flush() override { return drain() && FlushFileBuffers(file_.get()) != 0; }

  bool close() override {
    const bool drained = drain();
    return CloseHandle(file_.release()) != 0 && drained;
  }

 private:
  bool put(std::string_view bytes) override {
    constexpr std::size_t mostAtOnce = 1U << 30U;
    while (!bytes.empty()) {
      DWORD written = 0;
      const auto piece = static_cast<DWORD>(std::min(bytes.size(), mostAtOnce));
      if (WriteFile(file_.get(), bytes.data(), piece, &written, nullptr) == 0 || written == 0) return false;
      bytes.remove_prefix(written);
    }
    return true;
  }

  Tfile file_;
};

class TdiskFileSystem final : public TfileSystem {
 public:
  TreadResult read(const std::filesystem::path& path, std::string& content) override {
    Tfile file = openFile(path, GENERIC_READ, OPEN_EXISTING);
    const auto information = file ? informationOf(file) : std::nullopt;
    if (!information) return TreadResult::notOpened;
    const bool done = readAll(file, static_cast<std::size_t>(lengthOf(*information)), content);
    if (CloseHandle(file.release()) == 0 && done) return TreadResult::closeFailed;
    return done ? TreadResult::done : TreadResult::readFailed;
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

  bool isWritable(const std::filesystem::path& path) override {
    // For this program alone: a file that another one has open, whatever that one allows others, cannot be replaced.
    constexpr DWORD shareNothing = 0;
    const Tfile file = openFile(path, GENERIC_WRITE | DELETE, OPEN_EXISTING, shareNothing);
    if (file) return informationOf(file).has_value();
    if (!isMissing()) return false;
    const auto folder = path.parent_path().empty() ? "." : path.parent_path();
    return openOnce(folder, FILE_ADD_FILE, OPEN_EXISTING) != nullptr;
  }

  std::unique_ptr<TfileWriter> create(const std::filesystem::path& path, const std::filesystem::path& like) override {
    Tfile file = openFile(path, GENERIC_WRITE, CREATE_ALWAYS, FILE_SHARE_READ | FILE_SHARE_DELETE);
    if (!file) return nullptr;
    copyPermissions(like, path.native());
    return std::make_unique<TdiskWriter>(std::move(file));
  }

  bool rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
    constexpr DWORD how = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    return retrying([&] { return MoveFileExW(from.c_str(), to.c_str(), how) != 0; });
  }

  bool remove(const std::filesystem::path& path) override {
    return retrying([&] { return DeleteFileW(path.c_str()) != 0; }) || isMissing();
  }

  bool flushFolder(const std::filesystem::path& folder) override {
    const Tfile entries = openOnce(folder.empty() ? "." : folder, FILE_ADD_FILE, OPEN_EXISTING);
    if (!entries) return false;
    // Renaming has written its entry through already. Not every file system knows this call for a folder.
    return FlushFileBuffers(entries.get()) != 0 || GetLastError() == ERROR_ACCESS_DENIED ||
           GetLastError() == ERROR_INVALID_FUNCTION || GetLastError() == ERROR_INVALID_HANDLE;
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
