#include "print/reportLayout.h"

#include <algorithm>

#include "print/columnWidths.h"
#include "print/reportTable.h"

namespace {

constexpr std::size_t mostHeadingLines = 12;
constexpr std::size_t mostSearchLines = 3;
constexpr int longWord = 16;  ///< characters; a longer word may be broken
constexpr double usualPart = 0.97;

/// The width that is enough for nearly all texts.
int usualOf(std::vector<int>& widths) {
  if (widths.empty()) return 0;
  const auto usual = widths.begin() + static_cast<std::ptrdiff_t>(usualPart * static_cast<double>(widths.size() - 1));
  std::nth_element(widths.begin(), usual, widths.end());
  return *usual;
}

TcolumnNeed needOf(const TreportTable& table, std::size_t column, const TreportMetrics& metrics) {
  const int mostOfWord = longWord * metrics.text['n'];
  const int headingWord = std::min(widestWord(table.heading(column), metrics.heading), mostOfWord);
  std::vector<int> texts(table.rowCount());
  std::vector<int> words(table.rowCount());
  for (std::size_t row = 0; row < texts.size(); ++row) {
    const std::string text = table.text(row, column);
    texts[row] = textWidth(text, metrics.text);
    words[row] = widestWord(text, metrics.text);
  }
  const int most = std::max(headingWord, texts.empty() ? 0 : *std::max_element(texts.begin(), texts.end()));
  if (table.isNumber(column)) return {most, most, most, true};
  const int usual = std::max(headingWord, usualOf(texts));
  return {std::max(headingWord, std::min(usualOf(words), mostOfWord)), usual, most, false};
}

/// At most so many lines, the last one with an ellipsis where lines are left out.
TcellLines firstLines(std::string_view text, const TcharWidths& widths, int width, std::size_t most) {
  const char ellipsis = '\x85';
  const auto lines = wrappedLines(text, widths, width);
  TcellLines first(lines.begin(), lines.begin() + std::ptrdiff_t(std::min(lines.size(), most)));
  if (first.size() < lines.size()) first.back().back() = ellipsis;
  return first;
}

std::vector<TcellLines> headingLines(const TreportTable& table, const std::vector<TreportColumn>& columns,
                                     const TcharWidths& widths) {
  std::vector<TcellLines> cells;
  for (std::size_t column = 0; column < columns.size(); ++column) {
    cells.push_back(firstLines(table.heading(column), widths, columns[column].width, mostHeadingLines));
  }
  return cells;
}

std::size_t mostLines(const std::vector<TcellLines>& cells) {
  std::size_t most = 1;
  for (const TcellLines& cell : cells) most = std::max(most, cell.size());
  return most;
}

}  // namespace

TreportLayout::TreportLayout(const TreportTable& table, const TreportMetrics& metrics, QSize area)
    : table_(table), metrics_(metrics), area_(area) {
  makeColumns();
  makeSearch();
  makeHeadings();
  makePages();
}

void TreportLayout::makeColumns() {
  const auto count = static_cast<int>(table_.columnCount());
  std::vector<TcolumnNeed> needs;
  for (std::size_t column = 0; column < table_.columnCount(); ++column) {
    needs.push_back(needOf(table_, column, metrics_));
  }
  int left = metrics_.sidePadding;
  for (const int width : shareWidth(needs, area_.width() - 2 * metrics_.sidePadding * count)) {
    columns_.push_back({left, width});
    left += width + 2 * metrics_.sidePadding;
  }
}

void TreportLayout::makeSearch() {
  if (table_.search().empty()) return;
  const std::string text = "Search: " + table_.search();
  search_ = firstLines(text, metrics_.text, area_.width(), mostSearchLines);
}

void TreportLayout::makeHeadings() {
  headings_.cells = headingLines(table_, columns_, metrics_.heading);
  headings_.top = titleHeight + static_cast<int>(search_.size()) * metrics_.lineHeight;
  headings_.height = static_cast<int>(mostLines(headings_.cells)) * metrics_.lineHeight + 4 * rowPadding;
}

void TreportLayout::makePages() {
  const int room = bodyBottom() - headings_.top - headings_.height;
  int left = room;
  firstRows_.push_back(0);
  for (std::size_t row = 0; row < table_.rowCount(); ++row) {
    const bool isLast = row + 1 == table_.rowCount();
    const int height = rowHeight(row);
    if (height + (isLast ? summaryHeight() : 0) > left && left < room) {
      firstRows_.push_back(row);
      left = room;
    }
    left -= height;
  }
}

int TreportLayout::bodyBottom() const {
  return area_.height() - footerHeight;
}

int TreportLayout::summaryHeight() const {
  return metrics_.lineHeight + 4 * rowPadding;
}

int TreportLayout::rowHeight(std::size_t row) const {
  std::size_t lines = 1;
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    lines = std::max(lines, lineCount(table_.text(row, column), metrics_.text, columns_[column].width));
  }
  return static_cast<int>(lines) * metrics_.lineHeight + 2 * rowPadding;
}

std::vector<TreportRow> TreportLayout::page(std::size_t page) const {
  const std::size_t end = page + 1 < pageCount() ? firstRows_[page + 1] : table_.rowCount();
  int top = headings_.top + headings_.height;
  std::vector<TreportRow> rows;
  for (std::size_t row = firstRows_[page]; row < end; ++row) {
    TreportRow placed{row, top, 0, {}};
    for (std::size_t column = 0; column < columns_.size(); ++column) {
      const std::string text = table_.text(row, column);
      const auto lines = wrappedLines(text, metrics_.text, columns_[column].width);
      placed.cells.emplace_back(lines.begin(), lines.end());
    }
    placed.height = static_cast<int>(mostLines(placed.cells)) * metrics_.lineHeight + 2 * rowPadding;
    top += placed.height;
    rows.push_back(std::move(placed));
  }
  return rows;
}
