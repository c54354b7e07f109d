#include "browser/view.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>

#include "support/recordText.h"
#include "testproc/autosequenceFileStructs.h"

namespace {

/// A record with what it is sorted by: a number, or the first bytes of a text as a number that orders the same way.
struct Tkey {
  std::uint64_t value;
  TrecordIndex record;
};

using Tkeys = std::vector<Tkey>;
constexpr std::size_t prefixLength = sizeof(std::uint64_t);

/// The first eight bytes of a field, most significant first. The field is zero-filled behind its text.
std::uint64_t prefixOf(const char* field) {
  std::uint64_t prefix = 0;
  for (std::size_t i = 0; i < prefixLength; ++i) prefix = prefix << 8 | static_cast<unsigned char>(field[i]);
  return prefix;
}

template <typename ValueOf>
Tkeys makeKeys(const std::vector<TrecordIndex>& indices, ValueOf valueOf) {
  Tkeys keys;
  keys.reserve(indices.size());
  for (const TrecordIndex record : indices) keys.push_back({valueOf(record), record});
  return keys;
}

void sortByNumber(Tkeys& keys) {
  std::stable_sort(keys.begin(), keys.end(), [](const Tkey& a, const Tkey& b) { return a.value < b.value; });
}

void sortByText(Tkeys& keys, const TequipRecTable& records, int field) {
  const auto rest = [&](const Tkey& key) { return records.at(key.record).text(field) + prefixLength; };
  std::stable_sort(keys.begin(), keys.end(), [&](const Tkey& a, const Tkey& b) {
    if (a.value != b.value) return a.value < b.value;
    const bool textEnded = (a.value & 0xFF) == 0;
    return !textEnded && std::strcmp(rest(a), rest(b)) < 0;
  });
}

/// For each test procedure number the rank of its title among all titles; equal titles have equal ranks.
std::array<std::uint16_t, maxTestProcNumber + 1> titleRanks(const TtestProcTable& titles) {
  std::array<std::uint16_t, maxTestProcNumber + 1> numbers{};
  std::iota(numbers.begin(), numbers.end(), std::uint16_t{0});
  std::stable_sort(numbers.begin(), numbers.end(),
                   [&](unsigned a, unsigned b) { return titles.title(a) < titles.title(b); });
  std::array<std::uint16_t, maxTestProcNumber + 1> ranks{};
  for (std::size_t i = 1; i < numbers.size(); ++i) {
    const bool differs = titles.title(numbers[i]) != titles.title(numbers[i - 1]);
    ranks[numbers[i]] = static_cast<std::uint16_t>(ranks[numbers[i - 1]] + (differs ? 1 : 0));
  }
  return ranks;
}

Tkeys sortedKeys(const std::vector<TrecordIndex>& indices, TcolumnId column, const TequipRecTable& records,
                 const TtestProcTable& titles) {
  Tkeys keys;
  if (column < fieldCount) {
    keys = makeKeys(indices, [&](TrecordIndex i) { return prefixOf(records.at(i).text(column)); });
    sortByText(keys, records, column);
    return keys;
  }
  if (column == columnTestProc) {
    keys = makeKeys(indices, [&](TrecordIndex i) { return records.at(i).testProc(); });
  } else if (column == columnTitle) {
    keys =
        makeKeys(indices, [&, ranks = titleRanks(titles)](TrecordIndex i) { return ranks[records.at(i).testProc()]; });
  } else {
    keys = makeKeys(indices, [](TrecordIndex i) { return i; });
  }
  sortByNumber(keys);
  return keys;
}

}  // namespace

TcolumnId sortColumnId(TsortOrder& order, const TcolumnLayout& columns) {
  if (columns.id(order.column) == columnNotFound) order.column = columns.index(columnNumber);
  return columns.id(order.column);
}

void Tview::showAll() {
  indices_.resize(records_.count());
  std::iota(indices_.begin(), indices_.end(), TrecordIndex{0});
}

void Tview::sort(TcolumnId column, bool ascending) {
  const Tkeys keys = sortedKeys(indices_, column, records_, titles_);
  std::transform(keys.begin(), keys.end(), indices_.begin(), [](const Tkey& key) { return key.record; });
  if (!ascending) std::reverse(indices_.begin(), indices_.end());
}

std::string Tview::cellText(std::size_t position, TcolumnId column) const {
  const TrecordIndex index = indices_[position];
  const TequipRec& record = records_.at(index);
  if (column < fieldCount) return std::string(trimmedText(record.text(column)));
  switch (column) {
    case columnNumber:
      return std::to_string(index + 1);
    case columnTestProc:
      return std::to_string(record.testProc());
    case columnTitle:
      return std::string(trimmedText(titles_.title(record.testProc())));
    default:
      return "INVALID DATA";
  }
}
