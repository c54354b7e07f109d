#include "store/unsavedFile.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <utility>

#include "store/unsavedFormat.h"
#include "support/log.h"
#include "support/paths.h"
#include "support/randomName.h"

namespace {

using Tpaths = std::vector<std::filesystem::path>;
using TnameOf = std::string (*)(int);

constexpr std::string_view baseName = "EquipmentRecord.unsaved";
constexpr int mostAttempts = 20;

std::string unsavedName(int number) {
  return std::string(baseName) + (number == 1 ? "" : '-' + std::to_string(number));
}

std::string keptName(int number) {
  return std::string(baseName) + ".kept-" + std::to_string(number);
}

/// The number in a name that `unsavedName` makes, 0 for any other name.
int numberIn(const std::filesystem::path& name) {
  const std::string text = pathText(name);
  const std::size_t digits = baseName.size() + 1;
  int number = 1;
  if (text.size() > digits) std::from_chars(text.data() + digits, text.data() + text.size(), number);
  return unsavedName(number) == text ? number : 0;
}

Tpaths namesIn(TfileSystem& files, const std::filesystem::path& folder) {
  Tpaths names;
  return files.list(folder, names) ? names : Tpaths();
}

/// Creates the first file of `nameOf(1)`, `nameOf(2)` and so on that does not exist. Empty if the folder cannot be
/// used.
std::filesystem::path createFirstFree(TfileSystem& files, const std::filesystem::path& folder, TnameOf nameOf,
                                      std::unique_ptr<TfileWriter>& writer) {
  const Tpaths names = namesIn(files, folder);
  for (int number = 1, attempts = 0; attempts < mostAttempts; ++number) {
    const std::string name = nameOf(number);
    if (std::find(names.begin(), names.end(), name) != names.end()) continue;
    std::filesystem::path path = folder / name;
    if (files.create(path, {}, writer)) return path;
    // Somebody else may have created it since. A deleted file may keep the name for a moment.
    attempts += files.stamp(path).isFound() ? 1 : mostAttempts / 2;
  }
  return {};
}

bool makeFolders(TfileSystem& files, const std::filesystem::path& folder) {
  const std::filesystem::path parent = folder.parent_path();
  if (parent.empty() || parent == folder) return false;
  const bool isMade = files.makeFolder(folder) || (makeFolders(files, parent) && files.makeFolder(folder));
  return isMade && files.flushFolder(parent);
}

enum class Ttaken { taken, byOthers, failed };

/// Locks a new file. Until then, another program may take it for an orphan without changes and remove it, and a third
/// may give another file its name.
Ttaken take(TfileSystem& files, TunsavedFile& file, std::string_view header) {
  constexpr std::chrono::milliseconds mostWait(500);
  using enum TlockResult::Tend;
  if (!appendFlushed(file, header)) return Ttaken::failed;
  file.writer.reset();  // a new file that is being written cannot be locked on Windows
  TlockResult locked = files.lock(file.path, false, {}, mostWait);
  if (locked.end == busy || locked.end == absent) return Ttaken::byOthers;
  if (locked.end == unavailable) logInfo("no lock for " + pathText(file.path));
  std::string content;
  const TreadResult::Tend read = files.read(file.path, content).end;
  if (read == TreadResult::Tend::missing || (read == TreadResult::Tend::done && content != header)) {
    return Ttaken::byOthers;
  }
  if (read != TreadResult::Tend::done) return Ttaken::failed;
  const TstampResult looked = files.stamp(file.path);
  file.stamp = looked.stamp;
  file.lock = std::move(locked.lock);
  const bool isOpen = looked.isFound() && files.append(file.path, file.writer);
  return isOpen && files.flushFolder(file.path.parent_path()) ? Ttaken::taken : Ttaken::failed;
}

bool removeFlushed(TfileSystem& files, TunsavedFile& file) {
  file.writer.reset();
  return isGone(files, file) || (files.remove(file.path) && files.flushFolder(file.path.parent_path()));
}

}  // namespace

Tpaths unsavedFilesIn(TfileSystem& files, const std::filesystem::path& folder) {
  std::vector<std::pair<int, std::filesystem::path>> found;
  for (const std::filesystem::path& name : namesIn(files, folder)) {
    if (const int number = numberIn(name); number > 0) found.emplace_back(number, folder / name);
  }
  std::sort(found.begin(), found.end());
  Tpaths paths;
  for (auto& [number, path] : found) paths.push_back(std::move(path));
  return paths;
}

std::optional<TunsavedFile> createUnsavedFile(TfileSystem& files, const std::filesystem::path& folder,
                                              std::string_view listName) {
  for (int attempt = 0; attempt < mostAttempts; ++attempt) {
    TunsavedFile file;
    file.id = randomName();
    file.path = createFirstFree(files, folder, unsavedName, file.writer);
    if (file.path.empty() && attempt == 0 && makeFolders(files, folder)) continue;
    if (file.path.empty()) return std::nullopt;
    const Ttaken result = take(files, file, unsavedHeader(file.id, listName));
    if (result == Ttaken::taken) return file;
    file.writer.reset();
    if (result == Ttaken::byOthers) continue;
    files.remove(file.path);
    attempt += mostAttempts / 2;  // it may be this name only, but a full disk stays full
  }
  return std::nullopt;
}

bool appendFlushed(const TunsavedFile& file, std::string_view bytes) {
  return file.writer && file.writer->write(bytes) && file.writer->flush();
}

bool isGone(TfileSystem& files, const TunsavedFile& file) {
  const TstampResult looked = files.stamp(file.path);
  const bool isSame = looked.stamp.device == file.stamp.device && looked.stamp.identity == file.stamp.identity;
  return looked.isAbsent() || (looked.isFound() && !isSame);
}

bool removeInOrder(TfileSystem& files, std::vector<TunsavedFile>& spent) {
  const auto left =
      std::find_if_not(spent.begin(), spent.end(), [&](auto& file) { return removeFlushed(files, file); });
  spent.erase(spent.begin(), left);
  return spent.empty();
}

void setAside(TfileSystem& files, TunsavedFile file) {
  std::unique_ptr<TfileWriter> placeholder;
  const std::filesystem::path folder = file.path.parent_path();
  // Creating the new name first keeps two programs from choosing the same one.
  const std::filesystem::path kept = createFirstFree(files, folder, keptName, placeholder);
  placeholder.reset();
  file.writer.reset();
  if (kept.empty()) return;
  if (!files.rename(file.path, kept)) files.remove(kept);
  files.flushFolder(folder);
}
