#include "support/fileSystem.h"

#include "support/log.h"
#include "support/paths.h"
#include "support/randomName.h"

namespace {

constexpr std::string_view ownEnding = ".new-";

/// Removes what killed writers of `target` left behind: temporaries older than any living writer's. `now` is the time
/// of the same file system.
void removeRemains(TfileSystem& files, const std::filesystem::path& target, std::int64_t now) {
  constexpr std::int64_t longestWrite = 60'000'000'000;
  std::vector<std::filesystem::path> names;
  files.list(target.parent_path(), names);
  for (const std::filesystem::path& name : names) {
    if (!isTemporaryOf(pathText(name), pathText(target.filename()))) continue;
    const auto path = target.parent_path() / name;
    const TstampResult found = files.stamp(path);
    if (found.isFound() && now - found.stamp.modified > longestWrite) files.remove(path);
  }
}

/// Renames a new file unless another program has put its own in the place.
Toutcome renameOwn(TfileSystem& files, const std::filesystem::path& own, const TstampResult& written,
                   const std::filesystem::path& target) {
  const TstampResult found = files.stamp(own);
  if (written.isFound() && found.isFound() && found.stamp == written.stamp) return files.rename(own, target);
  const Tfailure changed{"rename", pathText(own), "another program has changed the file"};
  return written.failure.value_or(found.failure.value_or(changed));
}

}  // namespace

bool isTemporaryOf(std::string_view name, std::string_view target) {
  if (!name.starts_with(target)) return false;
  name.remove_prefix(target.size());
  if (name == ".new") return true;
  return name.starts_with(ownEnding) && isRandomName(name.substr(ownEnding.size()));
}

std::filesystem::path ownNameBeside(const std::filesystem::path& target) {
  auto name = target;
  name += std::string(ownEnding) + randomName();
  return name;
}

Toutcome writeFlushed(TfileSystem& files, const std::filesystem::path& path, const std::filesystem::path& like,
                      std::string_view content) {
  std::unique_ptr<TfileWriter> writer;
  Toutcome outcome = files.create(path, like, writer);
  if (outcome) outcome = writer->write(content);
  if (outcome) outcome = writer->flush();
  if (outcome) outcome = writer->close();
  return outcome;
}

Toutcome replaceFile(TfileSystem& files, const std::filesystem::path& path, std::string_view content) {
  const auto target = files.resolve(path);
  const auto temporary = ownNameBeside(target);
  Toutcome outcome = files.checkWritable(target);
  if (!outcome) return outcome;
  outcome = writeFlushed(files, temporary, target, content);
  const TstampResult written = outcome ? files.stamp(temporary) : TstampResult();
  if (outcome) outcome = renameOwn(files, temporary, written, target);
  if (!outcome) {
    files.remove(temporary);
    return outcome;
  }
  removeRemains(files, target, written.stamp.modified);
  return files.flushFolder(target.parent_path());
}

Tfailure loggedFailure(const char* operation, const std::filesystem::path& path, int error) {
  Tfailure failure{operation, pathText(path), systemErrorText(error)};
  logFailure(failure.text());
  return failure;
}
