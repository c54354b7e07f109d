#pragma once

#include <cstddef>

#include "store/listChange.h"

class TtestProcTable;

/// What the record editor needs of the browser that opens it. Rows are those of the browser's grid, counted from 0.
class TeditorHost : public TlistOwner {
 public:
  virtual const TtestProcTable& testProcs() const = 0;

  /// How many records the grid shows; 0 where the view is empty, although the grid then has one blank row.
  virtual std::size_t shownCount() const = 0;
  /// The record of a row. `row` must be below `shownCount`.
  virtual TrecordIndex recordAt(std::size_t row) const = 0;

  /// The grid's current row.
  virtual std::size_t currentRow() const = 0;
  /// Makes a row the grid's current and only selected one, and brings it into sight.
  virtual void setCurrentRow(std::size_t row) = 0;

  /// Shows the records as they are now, without sorting them anew.
  virtual void refillGrid() = 0;
};
