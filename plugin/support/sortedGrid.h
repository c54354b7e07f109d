#pragma once

#include <QTableView>

class TgridHeader;
struct TgridLayout;
struct TsortOrder;

/// A grid with a silver heading row: fixed row heights, whole-row selection of one range, columns that the user may
/// resize. It sorts nothing itself; the press on a heading is told by `headerPressed`.
///
/// Without a mouse: Ctrl+1 to Ctrl+9 and Ctrl+0 press the headings of the first to the tenth column, Ctrl+Right and
/// Ctrl+Left make the sort column wider and narrower.
class TsortedGrid : public QTableView {
  Q_OBJECT

 public:
  explicit TsortedGrid(QWidget* parent);

  /// Pixels a row, the heading row included; 18 unless it is told otherwise.
  void setPixelsPerRow(int pixels);

  /// Puts the sort arrow into a column's heading.
  void showSort(const TsortOrder& order);

  /// Applies stored widths, brought to what can be seen and reached, to the columns that are there; and reads them
  /// back.
  void setColumnWidths(const TgridLayout& layout);
  void readColumnWidths(TgridLayout& layout) const;

 signals:
  /// The left mouse button was pressed on a column's heading (not on the edge that resizes it), or its key was.
  void headerPressed(int column);

  /// A key was pressed and released here. One that was pressed elsewhere, to answer a message box for example, and only
  /// comes up over the grid is not told.
  void enterReleased();
  void deleteReleased();

  /// A cell was double-clicked with the left button. Whoever is told by this or by the keys may delete the grid.
  void cellDoubleClicked(const QModelIndex& index);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  bool useHeadingKey(int key);

  TgridHeader* header_;
  int pressedKey_ = 0;
};
