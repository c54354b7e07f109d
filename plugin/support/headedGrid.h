#pragma once

#include <QTableView>

class TgridHeader;
struct TgridLayout;
struct TsortOrder;

/// A grid with a silver heading row, rows of one height, selection of whole rows in one range, and columns that
/// the user may resize. It does not sort: `headerPressed` reports a press on a heading, and the owner sorts.
///
/// A double click on the edge behind a heading fits the column to what is in sight.
///
/// Keys: Ctrl+1 to Ctrl+9 and Ctrl+0 press the headings of the first ten columns. Ctrl+Right and Ctrl+Left make the
/// sort column wider and narrower.
class TheadedGrid : public QTableView {
  Q_OBJECT

 public:
  explicit TheadedGrid(QWidget* parent);

  /// Each row and the heading row are as high as the font needs, but at least this high: 18 by default.
  void setLeastRowHeight(int pixels);

  /// Shows the sort arrow in the heading of the sort column.
  void showSort(const TsortOrder& order);

  /// What stands in the middle of a grid that shows nothing; an empty text for none.
  void setEmptyText(const QString& text);

  /// Applies the stored widths to the present columns, within the limits of what the user can see and reach. Stored
  /// are the widths for rows of the least height; where the font makes rows higher, columns are as much wider.
  void setColumnWidths(const TgridLayout& layout);
  /// Copies the present columns' widths into `layout`, as they are stored.
  void readColumnWidths(TgridLayout& layout) const;

  /// A window always shows a few rows.
  QSize minimumSizeHint() const override;

 signals:
  /// The user pressed a column's heading with the left mouse button (not on the edge that resizes the column), or its
  /// key.
  void headerPressed(int column);

  /// A key was pressed and released in the grid. A key that was pressed elsewhere, for example in a message box, and
  /// only released here does not count.
  void enterReleased();
  void deleteReleased();

  /// The user double-clicked a cell with the left button. A receiver of this signal or of the key signals may delete
  /// the grid.
  void cellDoubleClicked(const QModelIndex& index);

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  void fitRows();
  double fontScale() const;
  bool useHeadingKey(int key);

  TgridHeader* header_;
  int leastRowHeight_ = 18;
  int pressedKey_ = 0;
  QString emptyText_;
};
