#include "print/columnWidths.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

namespace {

template <typename Twidth>
std::int64_t sum(const std::vector<TcolumnNeed>& needs, Twidth width) {
  std::int64_t result = 0;
  for (const TcolumnNeed& need : needs) result += width(need);
  return result;
}

template <typename Twidth>
std::vector<int> each(const std::vector<TcolumnNeed>& needs, Twidth width) {
  std::vector<int> widths;
  std::transform(needs.begin(), needs.end(), std::back_inserter(widths), width);
  return widths;
}

/// A column's needs at each level, from nothing to everything.
constexpr int levelCount = 5;

int needAt(const TcolumnNeed& need, int level) {
  const std::array<int, levelCount> needs = {0, need.fixed ? need.most : 0, need.least, need.usual, need.most};
  return needs[static_cast<std::size_t>(level)];
}

/// For a width between the needs of a level and of the next one: finds a bound so that columns that need less than it
/// get all they need, and the others get the bound.
std::vector<int> bounded(const std::vector<TcolumnNeed>& needs, int level, int available) {
  const auto widthAt = [level](int bound) {
    return [=](const TcolumnNeed& need) { return std::clamp(bound, needAt(need, level), needAt(need, level + 1)); };
  };
  int bound = 0;
  for (int step = 1 << 24; step > 0; step /= 2) {
    if (sum(needs, widthAt(bound + step)) <= available) bound += step;
  }
  return each(needs, widthAt(bound));
}

/// All that is needed, and a proportional share of the rest.
std::vector<int> stretched(const std::vector<TcolumnNeed>& needs, int available) {
  const auto elastic = [](const TcolumnNeed& need) { return need.fixed ? 0 : std::max(1, need.most); };
  const std::int64_t whole = std::max(sum(needs, elastic), std::int64_t{1});
  const std::int64_t shared =
      available - sum(needs, [](const TcolumnNeed& need) { return need.fixed ? need.most : 0; });
  return each(needs, [&](const TcolumnNeed& need) {
    return need.fixed ? need.most : static_cast<int>(elastic(need) * shared / whole);
  });
}

}  // namespace

std::vector<int> shareWidth(const std::vector<TcolumnNeed>& needs, int available) {
  for (int level = 0; level + 1 < levelCount; ++level) {
    const auto next = [level](const TcolumnNeed& need) { return needAt(need, level + 1); };
    if (sum(needs, next) > available) return bounded(needs, level, available);
  }
  return stretched(needs, available);
}
