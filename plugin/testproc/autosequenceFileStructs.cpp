#include "testproc/autosequenceFileStructs.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "support/checksum.h"
#include "support/fileSystem.h"

namespace {

constexpr std::string_view magic = "ASQ1";
constexpr std::size_t headerSize = 16;
constexpr std::size_t entrySize = 44;
constexpr std::size_t titleOffset = 2;

/// The little-endian number that `bytes` consists of.
std::uint32_t littleEndian(std::string_view bytes) {
  std::uint32_t value = 0;
  for (std::size_t i = bytes.size(); i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[i]);
  return value;
}

/// The entries of a list whose header is whole; nothing to hold where it is not.
std::string_view checkedEntries(std::string_view content, bool& whole) {
  whole = false;
  if (content.size() < headerSize || !content.starts_with(magic)) return {};
  const std::size_t count = littleEndian(content.substr(6, 2));
  const std::string_view entries = content.substr(headerSize);
  whole = littleEndian(content.substr(4, 2)) == entrySize && entries.size() == count * entrySize &&
          littleEndian(content.substr(8, 4)) == crc32Of(entries) && littleEndian(content.substr(12, 4)) == 0;
  return entries;
}

/// Takes one entry into the table. False: its number is none, or there already, or its title does not end.
bool takeEntry(std::string_view entry, TtestProcTable& table) {
  const std::uint32_t number = littleEndian(entry.substr(0, titleOffset));
  const std::string_view title = entry.substr(titleOffset);
  const std::size_t end = title.find('\0');
  if (number < 1 || number > maxTestProcNumber || table.hasEntry(number) || end == std::string_view::npos) return false;
  table.set(number, title.substr(0, end));
  return true;
}

bool parse(std::string_view content, TtestProcTable& table) {
  bool whole = false;
  std::string_view entries = checkedEntries(content, whole);
  while (whole && !entries.empty()) {
    whole = takeEntry(entries.substr(0, entrySize), table);
    entries.remove_prefix(entrySize);
  }
  return whole;
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
  TtestProcTable read;
  if (end != TreadResult::Tend::done || !parse(content, read)) return TtestProcLoad::damaged;
  table = std::move(read);
  return TtestProcLoad::loaded;
}
