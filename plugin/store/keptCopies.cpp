#include "store/keptCopies.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <ctime>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

#include "store/erException.h"
#include "support/fileSystem.h"
#include "support/log.h"
#include "support/paths.h"

namespace {

constexpr std::size_t daysToKeep = 14;

/// Stops the work on copies.
[[noreturn]] void fail(const Tfailure& failure) {
  throw TERException(EREXCEPTION, "The old files could not be kept", failure.text());
}

void require(const Toutcome& outcome) {
  if (!outcome) fail(outcome.failure());
}

/// A record file and its bytes; no bytes if it does not exist.
struct Toriginal {
  std::filesystem::path path;
  std::optional<std::string> bytes;
};

using Toriginals = std::array<Toriginal, 2>;

std::optional<std::string> bytesOf(TfileSystem& files, const std::filesystem::path& path) {
  std::string bytes;
  const TreadResult result = files.read(path, bytes);
  if (result.end == TreadResult::Tend::missing) return std::nullopt;
  if (result.end != TreadResult::Tend::done) fail(*result.failure);
  return bytes;
}

Toriginals originalsAt(TfileSystem& files, const std::filesystem::path& dataPath,
                       const std::filesystem::path& infoPath) {
  return {Toriginal{dataPath, bytesOf(files, dataPath)}, Toriginal{infoPath, bytesOf(files, infoPath)}};
}

std::set<std::string> entriesOf(TfileSystem& files, const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> names;
  require(files.list(folder, names));
  std::set<std::string> texts;
  for (const auto& name : names) texts.insert(pathText(name));
  return texts;
}

std::string keptName(const Toriginal& original, int number) {
  return pathText(original.path.filename()) + ".kept-" + std::to_string(number);
}

/// The numbers that copies have already.
std::set<int> numbersIn(const std::set<std::string>& names, const Toriginals& originals) {
  std::set<int> numbers;
  for (const Toriginal& original : originals) {
    const std::string beginning = pathText(original.path.filename()) + ".kept-";
    for (const std::string& name : names) {
      int number = 0;
      if (!name.starts_with(beginning)) continue;
      const char* const digits = name.data() + beginning.size();
      if (std::from_chars(digits, name.data() + name.size(), number).ec == std::errc()) numbers.insert(number);
    }
  }
  return numbers;
}

/// Whether the copies of this number are those of exactly these files.
bool isKeptAs(TfileSystem& files, const Toriginals& originals, int number, const std::set<std::string>& names) {
  return std::ranges::all_of(originals, [&](const Toriginal& original) {
    const std::string name = keptName(original, number);
    if (!original.bytes) return !names.contains(name);
    const auto path = original.path.parent_path() / name;
    const TstampResult found = files.stamp(path);
    if (!found.isFound() || found.stamp.length != original.bytes->size()) return false;
    std::string bytes;
    return files.read(path, bytes).end == TreadResult::Tend::done && bytes == *original.bytes;
  });
}

/// Writes a copy under a name of its own, then gives it its name.
void writeCopy(TfileSystem& files, const Toriginal& original, const std::filesystem::path& copy) {
  const auto temporary = ownNameBeside(original.path);
  Toutcome outcome = writeFlushed(files, temporary, original.path, *original.bytes);
  if (outcome) outcome = files.rename(temporary, copy);
  if (outcome) return;
  files.remove(temporary);
  fail(outcome.failure());
}

std::string namesOf(const Toriginals& originals, int number) {
  std::string names;
  for (const Toriginal& original : originals) {
    if (original.bytes) names += (names.empty() ? "" : " and ") + keptName(original, number);
  }
  return names;
}

/// Whether a name is that of a day's folder.
bool isDay(std::string_view name) {
  constexpr std::string_view shape = "0000-00-00";
  return std::ranges::equal(name, shape, [](char character, char wanted) {
    return wanted == '-' ? character == '-' : character >= '0' && character <= '9';
  });
}

/// Removes a folder of copies, unless it holds anything else or is a link to one.
void removeDay(TfileSystem& files, const std::filesystem::path& day, const Toriginals& originals) {
  if (files.resolve(day) != day) return;
  for (const Toriginal& original : originals) files.remove(day / original.path.filename());
  files.removeFolder(day);
}

/// Writes the day's copies into a folder under a name of its own, then gives it its name.
void writeDay(TfileSystem& files, const Toriginals& originals, const std::filesystem::path& day) {
  const auto temporary = ownNameBeside(day);
  Toutcome outcome = files.makeFolder(temporary);
  for (const Toriginal& original : originals) {
    if (!outcome || !original.bytes) continue;
    outcome = writeFlushed(files, temporary / original.path.filename(), original.path, *original.bytes);
  }
  if (outcome) outcome = files.flushFolder(temporary);
  if (outcome) outcome = files.rename(temporary, day);
  if (outcome) outcome = files.flushFolder(day.parent_path());
  if (outcome) return;
  removeDay(files, temporary, originals);
  fail(outcome.failure());
}

/// Removes the oldest days, and what a killed program has left.
void thinOut(TfileSystem& files, const std::filesystem::path& folder, const Toriginals& originals) {
  std::vector<std::string> days;
  for (const std::string& name : entriesOf(files, folder)) {
    const std::string_view day(name.data(), std::min<std::size_t>(name.size(), 10));
    if (!isDay(day)) continue;
    if (name.size() == day.size()) days.push_back(name);
    if (name.substr(day.size()).starts_with(".new-")) removeDay(files, folder / name, originals);
  }
  const std::size_t older = days.size() - std::min(days.size(), daysToKeep);
  for (std::size_t i = 0; i < older; ++i) removeDay(files, folder / days[i], originals);
}

}  // namespace

std::string keepCopies(TfileSystem& files, const std::filesystem::path& dataPath,
                       const std::filesystem::path& infoPath) {
  const Toriginals originals = originalsAt(files, dataPath, infoPath);
  if (!originals[0].bytes && !originals[1].bytes) return {};
  const auto folder = dataPath.parent_path();
  const std::set<std::string> names = entriesOf(files, folder);
  const std::set<int> numbers = numbersIn(names, originals);
  for (const int number : numbers) {
    if (isKeptAs(files, originals, number, names)) return namesOf(originals, number);
  }
  int number = 1;
  while (numbers.contains(number)) ++number;
  try {
    for (const Toriginal& original : originals) {
      if (original.bytes) writeCopy(files, original, folder / keptName(original, number));
    }
    require(files.flushFolder(folder));
  } catch (...) {
    for (const Toriginal& original : originals) files.remove(folder / keptName(original, number));
    throw;
  }
  std::string kept = namesOf(originals, number);
  logInfo("Kept the record files as " + kept);
  return kept;
}

void backUp(TfileSystem& files, const std::filesystem::path& dataPath, const std::filesystem::path& infoPath,
            const TpairSums& sums, const std::string& today) noexcept {
  try {
    const auto folder = findPath(dataPath.parent_path(), "BACKUP");
    if (entriesOf(files, folder).contains(today)) return;
    const Toriginals originals = originalsAt(files, dataPath, infoPath);
    const auto& [data, info] = originals;
    if (!data.bytes && !info.bytes) return;
    if (data.bytes && info.bytes && TpairSums{sumOf(*data.bytes), sumOf(*info.bytes)} == sums) return;
    require(files.makeFolder(folder));
    writeDay(files, originals, folder / today);
    require(files.flushFolder(dataPath.parent_path()));
    thinOut(files, folder, originals);
  } catch (const TERException& exception) {
    logFailure("No backup of the day: " + exception.reason());
  } catch (...) {
    logCaught("backUp");
  }
}

std::string todaysDate() {
  const std::time_t now = std::time(nullptr);
  std::array<char, 16> text{};
  if (const std::tm* local = std::localtime(&now)) std::strftime(text.data(), text.size(), "%Y-%m-%d", local);
  return text.data();
}
