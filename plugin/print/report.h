#pragma once

#include <QFont>
#include <QMarginsF>
#include <QPageLayout>
#include <QSize>
#include <QString>
#include <cstddef>

#include "print/reportLayout.h"
#include "print/reportTable.h"

class QPainter;

/// The page layout of reports on the given paper. The margin for a binder's holes is wide: the left one in portrait,
/// the top one in landscape.
QPageLayout reportPageLayout(const QPageSize& paper, bool landscape);

/// The equipment record report: a table, laid out for one paper and painted page by page. It is painted in its own
/// units, so that preview, printer and PDF differ only in scale.
class Treport {
 public:
  Treport(TreportTable table, const QPageLayout& paper);
  Treport(const Treport&) = delete;
  Treport& operator=(const Treport&) = delete;

  std::size_t pageCount() const { return layout_.pageCount(); }
  const QPageLayout& paper() const { return paper_; }

  /// Paints a page, counted from 0. The painter's origin is the top left corner of the area inside the margins, and
  /// `dotsPerInch` is the painter's resolution.
  void paintPage(QPainter& painter, std::size_t page, double dotsPerInch) const;

 private:
  struct Tfonts {
    explicit Tfonts(std::size_t columnCount);
    TreportMetrics metrics() const;

    QFont title;
    QFont heading;
    QFont text;
  };

  void paintTitle(QPainter& painter) const;
  void paintSearch(QPainter& painter) const;
  void paintHeadings(QPainter& painter) const;
  void paintRows(QPainter& painter, std::size_t page) const;
  void paintCells(QPainter& painter, const TreportRow& row, int top) const;
  void paintFooter(QPainter& painter, std::size_t page) const;

  TreportTable table_;
  QPageLayout paper_;
  Tfonts fonts_;
  double reduction_;  ///< the scale: 1, or less for paper that is too small
  TreportLayout layout_;
  QString date_;
};
