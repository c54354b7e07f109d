#include "testproc/autosequenceFileStructs.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "support/checksum.h"
#include "support/fileSystem.h"
#include "support/littleEndian.h"

namespace {

constexpr std::string_view magic = "ASQ1";
constexpr std::size_t headerSize = 16;
constexpr std::size_t entrySize = 44;
constexpr std::size_t titleOffset = 2;

/// The entries of a list; nothing if the header is damaged or does not match them.
std::optional<std::string_view> checkedEntries(std::string_view content) {
  if (content.size() < headerSize || !content.starts_with(magic)) return std::nullopt;
  const std::uint64_t count = littleEndian(content.substr(6, 2));
  const std::string_view entries = content.substr(headerSize);
  const bool whole = littleEndian(content.substr(4, 2)) == entrySize && entries.size() == count * entrySize &&
                     littleEndian(content.substr(8, 4)) == crc32Of(entries) && littleEndian(content.substr(12, 4)) == 0;
  return whole ? std::optional(entries) : std::nullopt;
}

/// Adds one entry to the table. False if its number is out of range or taken, or its title has no end.
bool takeEntry(std::string_view entry, TtestProcTable& table) {
  const auto number = static_cast<unsigned>(littleEndian(entry.substr(0, titleOffset)));
  const std::string_view title = entry.substr(titleOffset);
  const std::size_t end = title.find('\0');
  if (number < 1 || number > maxTestProcNumber || table.hasEntry(number) || end == std::string_view::npos) return false;
  table.set(number, title.substr(0, end));
  return true;
}

/// The table in the content of a file; nothing if the list is damaged.
std::optional<TtestProcTable> parse(std::string_view content) {
  auto entries = checkedEntries(content);
  if (!entries) return std::nullopt;
  TtestProcTable table;
  for (; !entries->empty(); entries->remove_prefix(entrySize)) {
    if (!takeEntry(entries->substr(0, entrySize), table)) return std::nullopt;
  }
  return table;
}

}  // namespace

std::string_view TtestProcTable::title(unsigned number) const {
  return hasEntry(number) ? std::string_view(titles_[number]) : std::string_view();
}

std::size_t TtestProcTable::count() const {
  return static_cast<std::size_t>(std::count(present_.begin(), present_.end(), true));
}

void TtestProcTable::set(unsigned number, std::string_view title) {
  titles_.at(number) = title;
  present_.at(number) = true;
}

TtestProcLoad loadTestProcTable(TfileSystem& files, const std::filesystem::path& path, TtestProcTable& table) {
  table = TtestProcTable();
  std::string content;
  const TreadResult::Tend end = files.read(path, content).end;
  if (end == TreadResult::Tend::missing) return TtestProcLoad::missing;
  if (end != TreadResult::Tend::done) return TtestProcLoad::damaged;
  auto read = parse(content);
  if (!read) return TtestProcLoad::damaged;
  table = *std::move(read);
  return TtestProcLoad::loaded;
}
