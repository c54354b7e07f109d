#pragma once

#include <QAbstractTableModel>
#include <cstddef>
#include <optional>

#include "support/headedGrid.h"

class TtestProcList;

/// The list of test procedures as the editor's grid shows it: number and title.
class TtestProcModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// The list must outlive the model.
  explicit TtestProcModel(const TtestProcList& list) : list_(list) {}

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  /// Takes over what the list holds now. Nothing is selected afterwards.
  void refill();

 private:
  const TtestProcList& list_;
  int rowCount_ = 0;
};

/// The editor's grid of test procedures, of which at most one is marked. The last column reaches to the right edge
/// whenever the grid is resized.
class TtestProcGrid : public TheadedGrid {
  Q_OBJECT

 public:
  explicit TtestProcGrid(QWidget* parent);

  /// The row that is marked, counted from 0. Having the keyboard's focus marks none.
  std::optional<std::size_t> markedRow() const;
  /// Marks a row and scrolls it to the top, as far as there are rows to fill the grid.
  void mark(std::size_t row);

 signals:
  void markChanged();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
};
