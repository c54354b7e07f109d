#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <windows.h>

// How the file system opens files on Windows. Every function leaves the reason of a failure in `GetLastError`.

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct ThandleCloser {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};

/// An open file or folder; null if it could not be opened.
using Tfile = std::unique_ptr<void, ThandleCloser>;

Tfile openOnce(const std::filesystem::path& path, DWORD access, DWORD disposition, DWORD share = shareAll,
               DWORD flags = 0);

/// The same, but fails if `path` is a link.
Tfile openNoLink(const std::filesystem::path& path, DWORD access, DWORD share);

/// Creates a file, which must not exist, with the access list of `like` if this user may give it that.
Tfile createLike(const std::filesystem::path& path, DWORD access, DWORD share, const std::filesystem::path& like);

/// Whether the last operation failed because nothing has that name, or only a file that is being deleted.
bool isMissing();

/// Whether the last operation failed because another program has the file open.
bool isHeldOpen();

/// Retries for a short while if another program has the file open: a virus scanner or a backup soon closes it.
template <typename Toperation>
auto retrying(Toperation operation) {
  constexpr int attempts = 6;
  constexpr DWORD pause = 15;  // milliseconds
  auto result = operation();
  for (int i = 1; i < attempts && !result && isHeldOpen(); ++i) {
    Sleep(pause);
    result = operation();
  }
  return result;
}

using TfileInformation = BY_HANDLE_FILE_INFORMATION;

/// What the system knows about a file on a disk; nothing for folders, devices and pipes.
std::optional<TfileInformation> informationOf(const Tfile& file);

/// Two 32-bit halves as one number.
inline std::uint64_t joined(DWORD high, DWORD low) {
  return (std::uint64_t{high} << 32U) | low;
}
