#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "browser/recordSorter.h"
#include "store/columns.h"

class TcolumnLayout;
class TtestProcTable;
struct TsortOrder;

/// What the sort column of a grid shows. A sort column that the grid does not have becomes column 0; the direction
/// stays.
TcolumnId sortColumnId(TsortOrder& order, const TcolumnLayout& columns);

/// The records that the grid shows, in its order. Records and titles belong to the browser.
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
  /// Adds one record at the end.
  void append(TrecordIndex index) { indices_.push_back(index); }

  /// Sorts as `sortRecords` does.
  void sort(TcolumnId column, bool ascending) { sortRecords(indices_, {column, ascending}, records_, titles_); }

  /// The record at a position.
  TrecordView recordAt(std::size_t position) const;
  /// What a column shows of the record at a position: `columnText`.
  std::string cellText(std::size_t position, TcolumnId column) const;

 private:
  const TequipRecTable& records_;
  const TtestProcTable& titles_;
  std::vector<TrecordIndex> indices_;
};
