#pragma once

#include <cstddef>

#include "store/listChange.h"

class TtestProcTable;

/// What the record editor needs from the browser that opens it. Rows are those of the browser's grid, counted from 0.
class TeditorHost : public TlistOwner {
 public:
  virtual const TtestProcTable& testProcs() const = 0;

  /// The number of records that the grid shows; 0 for an empty view, although the grid then has one blank row.
  virtual std::size_t shownCount() const = 0;
  /// The record in a row. `row` must be less than `shownCount`.
  virtual TrecordIndex recordAt(std::size_t row) const = 0;

  /// The grid's current row.
  virtual std::size_t currentRow() const = 0;
  /// Makes a row the grid's current and only selected row, and scrolls to it.
  virtual void setCurrentRow(std::size_t row) = 0;

  /// Refreshes the grid without sorting it.
  virtual void refillGrid() = 0;
};
