#include "support/openFile_posix.h"

#include <cerrno>

namespace {

/// A member of the file's group can keep the group, but not the owner.
void takeOver(const TopenFile& file, const struct stat& from) {
  const auto giveTo = [&](uid_t owner) {
    return retried([&] { return ::fchown(file.descriptor(), owner, from.st_gid); }) == 0;
  };
  constexpr auto sameOwner = static_cast<uid_t>(-1);
  if (!giveTo(from.st_uid)) giveTo(sameOwner);
  retried([&] { return ::fchmod(file.descriptor(), from.st_mode & 07777); });
}

}  // namespace

TopenFile createLike(const std::filesystem::path& path, int access, const std::filesystem::path& like) {
  constexpr mode_t ofNewFile = 0666;
  struct stat from {};
  const bool isThere = statusAt(like, from);
  if (!isThere && !meansAbsent()) return {};
  const mode_t mode = isThere ? from.st_mode & ofNewFile : ofNewFile;  // at no time more than `like` permits
  TopenFile file(path, access | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
  if (file && isThere) takeOver(file, from);
  return file;
}
