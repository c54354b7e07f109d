#pragma once

#include <QTableView>

class TgridHeader;

/// A grid of records: fixed row heights, whole-row selection of one range, columns that the user may resize. It sorts
/// nothing itself; the press on a heading is told by `headerPressed`.
class TrecordGrid : public QTableView {
  Q_OBJECT

 public:
  explicit TrecordGrid(QWidget* parent);

  void showSort(int column, bool ascending);

 signals:
  /// The left mouse button was pressed on a column's heading (not on the edge that resizes it).
  void headerPressed(int column);

 private:
  TgridHeader* header_;
};
