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

/// The margins (points) and orientation in which reports are printed, on the given paper: wide where a binder's holes
/// go, on the left of an upright page and at the top of one that lies.
QPageLayout reportPageLayout(const QPageSize& paper, bool landscape);

/// The paper that is usual in the user's country: A4 or Letter.
QPageSize usualPaper();

/// The equipment record report: a table, laid out for one kind of paper, and painted page by page. The same on every
/// device, as it is painted in units of its own: preview, printer and PDF differ only in what they scale it by.
class Treport {
 public:
  Treport(TreportTable table, const QPageLayout& paper);
  Treport(const Treport&) = delete;
  Treport& operator=(const Treport&) = delete;

  std::size_t pageCount() const { return layout_.pageCount(); }
  const QPageLayout& paper() const { return paper_; }

  /// Paints a page, counted from 0, with its top left corner, inside the margins, at the painter's origin.
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
  void paintHeadings(QPainter& painter) const;
  void paintRows(QPainter& painter, std::size_t page) const;
  void paintCells(QPainter& painter, const TreportRow& row, int top) const;
  void paintFooter(QPainter& painter, std::size_t page) const;

  TreportTable table_;
  QPageLayout paper_;
  Tfonts fonts_;
  double reduction_;  ///< 1, or less for paper that is too small
  TreportLayout layout_;
  QString date_;
};
