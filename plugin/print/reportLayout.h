#pragma once

#include <QSize>
#include <cstddef>
#include <string>
#include <vector>

#include "print/lineWrap.h"

class TreportTable;

/// Reports are measured in tenths of a point, which are exact enough for any device as whole numbers.
inline constexpr int unitsPerInch = 720;
inline constexpr int unitsPerPoint = 10;

/// The smallest area for a report's layout. On smaller paper the report is scaled down.
inline constexpr QSize leastReportArea(300 * unitsPerPoint, 420 * unitsPerPoint);

/// What the layout needs to know about the fonts.
struct TreportMetrics {
  TcharWidths text{};     ///< of cells
  TcharWidths heading{};  ///< of column headings
  int lineHeight = 0;     ///< of both
  int sidePadding = 0;    ///< to the left and right of each column's texts
};

/// The lines of one cell, from top to bottom.
using TcellLines = std::vector<std::string>;

/// A row on a page.
struct TreportRow {
  std::size_t row;  ///< in the table, from 0
  int top;          ///< from the top of the area
  int height;
  std::vector<TcellLines> cells;
};

struct TreportColumn {
  int left;   ///< where its texts begin
  int width;  ///< of its texts, the space between columns not included
};

/// The positions of everything on a report's pages. Columns are as wide as their texts need, within the page; headings
/// and cells wrap. The constructor assigns the rows to pages in one pass over the table; `page` lays out one page. The
/// table must outlive the layout.
class TreportLayout {
 public:
  /// The area, without the paper's margins, is at least `leastReportArea`.
  TreportLayout(const TreportTable& table, const TreportMetrics& metrics, QSize area);

  QSize area() const { return area_; }
  const std::vector<TreportColumn>& columns() const { return columns_; }
  /// What was searched for, below the title; no lines if nothing was.
  const TcellLines& search() const { return search_; }
  /// The column headings, the same on each page. A very long heading ends in an ellipsis.
  const TreportRow& headings() const { return headings_; }
  /// At least 1, also for a report without rows.
  std::size_t pageCount() const { return firstRows_.size(); }
  /// The rows of a page, counted from 0.
  std::vector<TreportRow> page(std::size_t page) const;
  /// The bottom of the area for rows and summary, and the top of the footer.
  int bodyBottom() const;
  /// The height of the summary line after the last row.
  int summaryHeight() const;

  static constexpr int titleHeight = 36 * unitsPerPoint;
  static constexpr int footerHeight = 18 * unitsPerPoint;
  static constexpr int rowPadding = 2 * unitsPerPoint;  ///< above and below each row's texts

 private:
  void makeColumns();
  void makeSearch();
  void makeHeadings();
  void makePages();
  int rowHeight(std::size_t row) const;

  const TreportTable& table_;
  TreportMetrics metrics_;
  QSize area_;
  std::vector<TreportColumn> columns_;
  TcellLines search_;
  TreportRow headings_{};
  std::vector<std::size_t> firstRows_;  ///< of each page
};
