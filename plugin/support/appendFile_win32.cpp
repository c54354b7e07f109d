#include <cstring>
#include <memory>
#include <system_error>
#include <vector>
#include <windows.h>

#include "support/appendFile.h"

namespace {

struct TsharedFileCloser {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};

using TsharedFile = std::unique_ptr<void, TsharedFileCloser>;

/// A file on a disk that everybody else may use meanwhile; null where there is none.
TsharedFile openShared(const std::filesystem::path& path, DWORD access, DWORD disposition) {
  constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE handle = CreateFileW(path.c_str(), access | FILE_READ_ATTRIBUTES | SYNCHRONIZE, shareAll, nullptr,
                                    disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
  TsharedFile file(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
  if (file && GetFileType(file.get()) != FILE_TYPE_DISK) return nullptr;
  return file;
}

std::uint64_t sizeOf(const TsharedFile& file) {
  LARGE_INTEGER size{};
  return GetFileSizeEx(file.get(), &size) == 0 ? 0 : static_cast<std::uint64_t>(size.QuadPart);
}

/// Keeps other programs that append from writing meanwhile. The system puts each write at the end of the file, but not
/// every file system finds that end and writes in one step. The lock is on a byte far behind the end: readers go on.
class TappendLock {
 public:
  explicit TappendLock(const TsharedFile& file) : file_(file) {
    isLocked_ = LockFileEx(file_.get(), LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &place_) != 0;
  }
  TappendLock(const TappendLock&) = delete;
  TappendLock& operator=(const TappendLock&) = delete;
  ~TappendLock() {
    if (isLocked_) UnlockFileEx(file_.get(), 0, 1, 0, &place_);
  }

 private:
  const TsharedFile& file_;
  OVERLAPPED place_ = placeOfLock();
  bool isLocked_ = false;

  static OVERLAPPED placeOfLock() {
    OVERLAPPED place{};
    place.OffsetHigh = 0x7FFFFFFF;
    return place;
  }
};

/// Renames the open file itself, whatever its path names by now.
void renameOpenFile(const TsharedFile& file, const std::wstring& name) {
  const std::size_t bytes = name.size() * sizeof(wchar_t);
  std::vector<FILE_RENAME_INFO> buffer(2 + bytes / sizeof(FILE_RENAME_INFO));
  FILE_RENAME_INFO& information = buffer.front();
  information.ReplaceIfExists = TRUE;
  information.FileNameLength = static_cast<DWORD>(bytes);
  std::memcpy(information.FileName, name.data(), bytes);
  SetFileInformationByHandle(file.get(), FileRenameInfo, &information,
                             static_cast<DWORD>(buffer.size() * sizeof(FILE_RENAME_INFO)));
}

}  // namespace

TappendResult appendToFile(const std::filesystem::path& path, std::string_view bytes, std::uint64_t mostBytes) {
  // Without the right to write anywhere, each write goes to the end of the file. The lock needs the right to read.
  const TsharedFile file = openShared(path, FILE_APPEND_DATA | FILE_READ_DATA, OPEN_ALWAYS);
  if (!file) return TappendResult::failed;
  const TappendLock lock(file);
  if (sizeOf(file) + bytes.size() > mostBytes) return TappendResult::full;
  DWORD written = 0;
  const BOOL done = WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  return done != 0 && written == bytes.size() ? TappendResult::done : TappendResult::failed;
}

void turnFileOver(const std::filesystem::path& path, const std::filesystem::path& older, std::uint64_t bytes) {
  std::error_code error;
  const auto target = std::filesystem::absolute(older, error);
  const TsharedFile file = openShared(path, DELETE, OPEN_EXISTING);
  if (!error && file && sizeOf(file) > bytes) renameOpenFile(file, target.native());
}
