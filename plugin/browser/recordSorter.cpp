#include "browser/recordSorter.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>
#include <span>
#include <string_view>
#include <utility>

#include "support/recordText.h"
#include "testproc/autosequenceFileStructs.h"

namespace {

/// A position in the list with its sort value: a number, or eight bytes of a text as a number that orders the same way.
/// Of equal values the lower position comes first, which makes every sort here stable.
struct Tkey {
  std::uint64_t value;
  std::uint32_t position;

  bool operator<(const Tkey& other) const {
    return value != other.value ? value < other.value : position < other.position;
  }
};

using Tkeys = std::span<Tkey>;
constexpr std::size_t wordLength = sizeof(std::uint64_t);
constexpr int bitsPerDigit = 8;
constexpr std::size_t digitCount = std::size_t{1} << bitsPerDigit;

unsigned digitOf(std::uint64_t value, int digit) {
  return static_cast<unsigned>(value >> (bitsPerDigit * digit)) % digitCount;
}

/// Sorts by one digit of the value. The keys are sorted by their lower digits already.
void sortByDigit(Tkeys keys, Tkeys sorted, int digit) {
  std::array<std::uint32_t, digitCount> starts{};
  for (const Tkey& key : keys) ++starts[digitOf(key.value, digit)];
  std::exclusive_scan(starts.begin(), starts.end(), starts.begin(), std::uint32_t{0});
  for (const Tkey& key : keys) sorted[starts[digitOf(key.value, digit)]++] = key;
}

/// Sorts keys that are in order of position, digit by digit where they differ. `spare` must be as long as `keys`.
void sortByValue(Tkeys keys, Tkeys spare) {
  constexpr std::size_t fewKeys = 192;
  if (keys.size() <= fewKeys) return std::sort(keys.begin(), keys.end());
  std::uint64_t differing = 0;
  for (const Tkey& key : keys) differing |= key.value ^ keys.front().value;
  Tkeys from = keys;
  Tkeys to = spare;
  for (int digit = 0; digit < static_cast<int>(wordLength); ++digit) {
    if (digitOf(differing, digit) == 0) continue;
    sortByDigit(from, to, digit);
    std::swap(from, to);
  }
  if (from.data() != keys.data()) std::copy(from.begin(), from.end(), keys.begin());
}

/// Sorts records by a text field, eight bytes at a time.
class TtextSorter {
 public:
  /// Copies the field's texts, so that sorting works in a small piece of memory.
  TtextSorter(const std::vector<TrecordIndex>& indices, const TequipRecTable& records, int field)
      : wordCount_((textField(field).size + wordLength - 1) / wordLength) {
    words_.reserve(indices.size() * wordCount_);
    for (const TrecordIndex index : indices) appendWords(records.at(index).text(field));
  }

  /// Sorts keys that are in order of position and whose texts are equal before word `index`.
  void sort(Tkeys keys, Tkeys spare, std::size_t index = 0) const {
    for (Tkey& key : keys) key.value = words_[key.position * wordCount_ + index];
    sortByValue(keys, spare);
    if (index + 1 >= wordCount_) return;
    for (std::size_t first = 0, last = 0; first < keys.size(); first = last) {
      const std::uint64_t value = keys[first].value;
      while (last < keys.size() && keys[last].value == value) ++last;
      const bool textEnded = value % digitCount == 0;
      if (!textEnded && last - first > 1) sort(keys.subspan(first, last - first), spare.first(last - first), index + 1);
    }
  }

 private:
  /// Appends a text as big-endian words, padded with zeros.
  void appendWords(std::string_view text) {
    for (std::size_t i = 0; i < wordCount_; ++i, text.remove_prefix(std::min(text.size(), wordLength))) {
      std::array<unsigned char, wordLength> bytes{};
      std::copy_n(text.begin(), std::min(text.size(), wordLength), bytes.begin());
      words_.push_back(wordOf(bytes));
    }
  }

  static std::uint64_t wordOf(const std::array<unsigned char, wordLength>& bytes) {
    std::uint64_t word = 0;
    for (const unsigned char byte : bytes) word = word << 8 | byte;
    return word;
  }

  std::size_t wordCount_;
  std::vector<std::uint64_t> words_;
};

/// The rank of each test procedure's title among all titles, by number. Equal titles have equal ranks.
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

/// The sort value for a column that is no text field.
std::uint64_t numberOf(TrecordIndex record, TcolumnId column, const TequipRecTable& records,
                       std::span<const std::uint16_t> ranks) {
  if (column == columnTestProc) return records.at(record).testProc();
  return column == columnTitle ? ranks[records.at(record).testProc()] : record;
}

}  // namespace

void sortRecords(std::vector<TrecordIndex>& indices, const Tsorting& by, const TequipRecTable& records,
                 const TtestProcTable& titles) {
  const std::size_t count = indices.size();
  std::vector<Tkey> keys(2 * count);
  const Tkeys sorted = Tkeys(keys).first(count);
  const Tkeys spare = Tkeys(keys).last(count);
  for (std::uint32_t i = 0; i < sorted.size(); ++i) sorted[i].position = i;
  if (by.column < fieldCount) {
    TtextSorter(indices, records, by.column).sort(sorted, spare);
  } else {
    const auto ranks = titleRanks(titles);
    for (Tkey& key : sorted) key.value = numberOf(indices[key.position], by.column, records, ranks);
    sortByValue(sorted, spare);
  }
  std::vector<TrecordIndex> result(count);
  std::transform(sorted.begin(), sorted.end(), result.begin(), [&](const Tkey& key) { return indices[key.position]; });
  if (!by.ascending) std::reverse(result.begin(), result.end());
  indices = std::move(result);
}
