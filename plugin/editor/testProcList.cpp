#include "editor/testProcList.h"

#include <algorithm>

#include "support/gridLayout.h"
#include "support/recordText.h"
#include "testproc/autosequenceFileStructs.h"

namespace {

constexpr std::string_view unusedTitle = "(UNUSED)";

}  // namespace

std::optional<std::size_t> TtestProcList::rowOf(unsigned number) const {
  const auto found = std::find(numbers_.begin(), numbers_.end(), number);
  if (found == numbers_.end()) return std::nullopt;
  return static_cast<std::size_t>(found - numbers_.begin());
}

std::string_view TtestProcList::titleAt(std::size_t row) const {
  return titles_.title(numbers_[row]);
}

std::string_view TtestProcList::emptyText() const {
  if (count() > 0) return {};
  return titles_.count() == 0 ? "No test procedure titles were loaded." : "No title matches the search.";
}

void TtestProcList::showAll() {
  search({});
}

void TtestProcList::search(std::string_view text) {
  const std::string sought = lowerCased(trimmedText(text));
  numbers_.clear();
  for (unsigned number = 0; number <= maxTestProcNumber; ++number) {
    const std::string_view title = trimmedText(titles_.title(number));
    const bool offered = titles_.hasEntry(number) && title != unusedTitle;
    if (offered && lowerCased(title).find(sought) != std::string::npos) numbers_.push_back(number);
  }
}

void TtestProcList::sort(TsortOrder& order) {
  if (order.column != titleColumn) order.column = numberColumn;
  if (order.column == titleColumn) {
    std::stable_sort(numbers_.begin(), numbers_.end(),
                     [this](unsigned a, unsigned b) { return titles_.title(a) < titles_.title(b); });
  } else {
    std::stable_sort(numbers_.begin(), numbers_.end());
  }
  if (!order.ascending) std::reverse(numbers_.begin(), numbers_.end());
}

std::string TtestProcList::caption(unsigned number) const {
  const std::string_view title = titles_.title(number);
  const std::string_view shown = rowOf(number) ? title : trimmedText(title);
  return std::to_string(number).append(" - ").append(shown);
}
