#pragma once

#include <QHeaderView>
#include <QPixmap>
#include <QStyledItemDelegate>

/// The grid's heading row: silver, with the sort arrow beside the text of the sort column.
class TgridHeader : public QHeaderView {
  Q_OBJECT

 public:
  explicit TgridHeader(QWidget* parent);

  /// Moves the sort arrow. A column that is not there has none.
  void showSort(int column, bool ascending);
  int sortColumn() const { return sortColumn_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void paintSection(QPainter* painter, const QRect& rect, int section) const override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  QPixmap sortUp_;
  QPixmap sortDown_;
  int sortColumn_ = -1;
  bool sortAscending_ = true;
};

/// The grid's cells: rows in turn white and light blue with dark text, selected ones in the palette's highlight, one
/// line of text with an ellipsis where it does not fit.
class TgridDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
