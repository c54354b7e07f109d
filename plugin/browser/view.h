#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "browser/columns.h"
#include "store/datastructs.h"
#include "support/gridLayout.h"

class TtestProcTable;

/// What the sort column of a grid with these columns shows. A column that is not there becomes column 0; the direction
/// stays.
TcolumnId sortColumnId(TsortOrder& order, const TcolumnLayout& columns);

/// The ordered list of record indices that the grid shows. Records and titles stay the browser's.
class Tview {
 public:
  Tview(const TequipRecTable& records, const TtestProcTable& titles) : records_(records), titles_(titles) {}

  std::size_t count() const { return indices_.size(); }
  bool isEmpty() const { return indices_.empty(); }
  /// The record shown at a position, counted from 0.
  TrecordIndex at(std::size_t position) const { return indices_[position]; }
  const TequipRecTable& records() const { return records_; }

  /// Shows all records in table order.
  void showAll();

  /// Shows these records, in this order.
  void show(std::vector<TrecordIndex> indices) { indices_ = std::move(indices); }
  /// Shows one record more, as the last.
  void append(TrecordIndex index) { indices_.push_back(index); }

  /// Sorts by what a column shows: texts byte by byte, numbers by value, each stable; descending is the ascending
  /// result reversed, ties included. A code that no column has sorts by record index.
  void sort(TcolumnId column, bool ascending);

  /// What a column shows of the record at a position (Windows-1252), trimmed; "INVALID DATA" for a code that is none.
  std::string cellText(std::size_t position, TcolumnId column) const;

 private:
  const TequipRecTable& records_;
  const TtestProcTable& titles_;
  std::vector<TrecordIndex> indices_;
};
