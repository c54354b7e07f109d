#pragma once

#include <QSize>
#include <cstddef>
#include <string>
#include <vector>

#include "print/lineWrap.h"

class TreportTable;

/// Reports are measured in units of a tenth of a point, so that whole numbers are exact enough on any device.
inline constexpr int unitsPerInch = 720;
inline constexpr int unitsPerPoint = 10;

/// The smallest area that a report can be laid out in; smaller paper shows it reduced.
inline constexpr QSize leastReportArea(300 * unitsPerPoint, 420 * unitsPerPoint);

/// What layout has to know of the fonts.
struct TreportMetrics {
  TcharWidths text{};     ///< of cells
  TcharWidths heading{};  ///< of column headings
  int lineHeight = 0;     ///< of both
  int sidePadding = 0;    ///< left and right of each column's texts
};

/// The lines of one cell, from the top.
using TcellLines = std::vector<std::string>;

/// A row as it stands on a page.
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

/// Where everything stands on the pages of a report. Headings and rows are wrapped in columns as wide as their texts
/// need, within the width of the page. Which rows stand on which page is found when it is made, in one pass over the
/// table; a page is laid out when it is asked for. The table must outlive it.
class TreportLayout {
 public:
  /// The area, without the paper's margins, is at least `leastReportArea`.
  TreportLayout(const TreportTable& table, const TreportMetrics& metrics, QSize area);

  QSize area() const { return area_; }
  const std::vector<TreportColumn>& columns() const { return columns_; }
  /// The column headings, the same on each page; one that would fill the page is cut with an ellipsis.
  const TreportRow& headings() const { return headings_; }
  /// A report without rows has one page, too.
  std::size_t pageCount() const { return firstRows_.size(); }
  /// The rows of a page, counted from 0.
  std::vector<TreportRow> page(std::size_t page) const;
  /// The bottom of the rows and what follows them; the footer stands below.
  int bodyBottom() const;
  /// The height of the line that follows the last row.
  int summaryHeight() const;

  static constexpr int titleHeight = 36 * unitsPerPoint;
  static constexpr int footerHeight = 18 * unitsPerPoint;
  static constexpr int rowPadding = 2 * unitsPerPoint;  ///< above and below each row's texts

 private:
  void makeColumns();
  void makeHeadings();
  void makePages();
  int rowHeight(std::size_t row) const;

  const TreportTable& table_;
  TreportMetrics metrics_;
  QSize area_;
  std::vector<TreportColumn> columns_;
  TreportRow headings_{};
  std::vector<std::size_t> firstRows_;  ///< of each page
};
