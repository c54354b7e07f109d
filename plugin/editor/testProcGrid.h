#pragma once

#include <QAbstractTableModel>
#include <cstddef>
#include <optional>

#include "support/headedGrid.h"

class TtestProcList;
struct TsortOrder;

/// The list of test procedures as a table model: number and title.
class TtestProcModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// The list must outlive the model.
  explicit TtestProcModel(const TtestProcList& list) : list_(list) {}

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  /// Refreshes the model from the list. Clears the selection.
  void refill();

 private:
  const TtestProcList& list_;
  int rowCount_ = 0;
};

/// The editor's grid of test procedures, at most one of them marked. Resizing the grid extends the last column to the
/// right edge.
class TtestProcGrid : public TheadedGrid {
  Q_OBJECT

 public:
  explicit TtestProcGrid(QWidget* parent);

  /// Shows how the list is sorted, and in an empty one why it is.
  void showList(const TtestProcList& list, const TsortOrder& order);

  /// The marked row, counted from 0. Keyboard focus alone marks no row.
  std::optional<std::size_t> markedRow() const;
  /// Marks a row and scrolls it as close to the top as the number of rows allows.
  void mark(std::size_t row);

 signals:
  void markChanged();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
};
