#include "support/openFile_win32.h"

#include <aclapi.h>
#include <algorithm>
#include <array>
#include <winternl.h>

// The system's own name for the reason of the last failure; no header declares it.
extern "C" NTSYSAPI NTSTATUS NTAPI RtlGetLastNtStatus();

namespace {

/// Gives a file the access list of another. If this user may not, the file keeps its own.
void copyPermissions(std::wstring from, std::wstring to) {
  PSECURITY_DESCRIPTOR found = nullptr;
  PACL list = nullptr;
  if (GetNamedSecurityInfoW(from.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &list, nullptr,
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

/// Whether the last operation failed because the file is deleted, but not yet closed by all that had it open. Until
/// then it keeps its name and cannot be opened any more.
bool isBeingDeleted() {
  constexpr auto deletePending = static_cast<NTSTATUS>(0xC0000056);  // STATUS_DELETE_PENDING
  return GetLastError() == ERROR_ACCESS_DENIED && RtlGetLastNtStatus() == deletePending;
}

}  // namespace

Tfile openOnce(const std::filesystem::path& path, DWORD access, DWORD disposition, DWORD share, DWORD flags) {
  const HANDLE handle = CreateFileW(path.c_str(), access, share, nullptr, disposition,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr);
  return Tfile(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

Tfile openNoLink(const std::filesystem::path& path, DWORD access, DWORD share) {
  Tfile file = openOnce(path, access | FILE_READ_ATTRIBUTES, OPEN_EXISTING, share, FILE_FLAG_OPEN_REPARSE_POINT);
  FILE_ATTRIBUTE_TAG_INFO tag{};
  if (!file) return nullptr;
  const auto information = informationOf(file);
  if (!information) return nullptr;
  if ((information->dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return file;
  if (GetFileInformationByHandleEx(file.get(), FileAttributeTagInfo, &tag, sizeof tag) == 0) return nullptr;
  if (IsReparseTagNameSurrogate(tag.ReparseTag)) {
    SetLastError(ERROR_CANT_ACCESS_FILE);
    return nullptr;
  }
  // A file that the system keeps in another form, compressed or elsewhere.
  file.reset();
  return openOnce(path, access, OPEN_EXISTING, share);
}

Tfile createLike(const std::filesystem::path& path, DWORD access, DWORD share, const std::filesystem::path& like) {
  Tfile file = retrying([&] { return openOnce(path, access, CREATE_NEW, share, FILE_FLAG_OPEN_REPARSE_POINT); });
  if (file) copyPermissions(like.native(), path.native());
  return file;
}

bool isMissing() {
  return GetLastError() == ERROR_FILE_NOT_FOUND || GetLastError() == ERROR_PATH_NOT_FOUND || isBeingDeleted();
}

bool isHeldOpen() {
  constexpr std::array<DWORD, 4> held = {ERROR_SHARING_VIOLATION, ERROR_LOCK_VIOLATION, ERROR_ACCESS_DENIED,
                                         ERROR_USER_MAPPED_FILE};
  return std::find(held.begin(), held.end(), GetLastError()) != held.end();
}

std::optional<TfileInformation> informationOf(const Tfile& file) {
  TfileInformation information{};
  if (GetFileType(file.get()) == FILE_TYPE_DISK && GetFileInformationByHandle(file.get(), &information) == 0) {
    return std::nullopt;
  }
  // What is not on a disk has no attributes.
  const bool isFile =
      information.dwFileAttributes != 0 && (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
  if (!isFile) SetLastError(ERROR_FILE_INVALID);
  return isFile ? std::optional(information) : std::nullopt;
}
