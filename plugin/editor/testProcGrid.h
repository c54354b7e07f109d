#pragma once

#include <optional>

#include "support/headedGrid.h"

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
