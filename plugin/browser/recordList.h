#pragma once

#include <cstddef>
#include <utility>

#include "browser/columnLayout.h"
#include "browser/search.h"
#include "browser/view.h"
#include "store/listChange.h"
#include "support/gridLayout.h"
#include "testproc/autosequenceFileStructs.h"

/// The rows of the grid from `top` to `bottom`, both included, counted from 0.
struct TrowRange {
  std::size_t top = 0;
  std::size_t bottom = 0;

  std::size_t count() const { return bottom - top + 1; }
};

/// The records, which of them are shown in which order and columns, and what the user's commands do to them. Knows no
/// window; whoever changes it refills the grid.
class TrecordList {
 public:
  const TequipRecTable& records() const { return records_; }
  /// Replaces all records. The view is to be made anew afterwards.
  void setRecords(TequipRecTable records) { records_ = std::move(records); }
  /// Makes a change and returns the one that takes it back. The view stays as it is.
  TlistChange change(TlistChange change) { return applyChange(records_, std::move(change)); }

  TtestProcTable& titles() { return titles_; }
  const TtestProcTable& titles() const { return titles_; }
  const Tview& view() const { return view_; }
  const TcolumnLayout& columns() const { return columns_; }

  /// Makes the columns that the settings ask for.
  void buildColumns(const TbrowserSettings& settings) { columns_.build(settings); }
  /// The same for a list that is sorted: it stays sorted by the same where that is still a column, otherwise the order
  /// becomes the first column's, ascending.
  void changeColumns(const TbrowserSettings& settings, TsortOrder& order);

  /// Sorts what is shown. A sort column that is not there becomes column 0.
  void sort(TsortOrder& order);

  /// Narrows the view to the records found, searching all records, and remembers the texts. Does nothing, and returns
  /// false, while the view is empty; texts that are all empty leave the view as it is.
  bool search(const TsearchTexts& texts);
  /// Shows all records and forgets the search.
  void clearSearch();

  /// Whether so many records more can be added.
  bool hasRoomFor(std::size_t count) const;
  /// Adds a blank record at the end of table and view, and returns its index. There must be room.
  TrecordIndex addBlank();
  /// Takes a record that was just added back, and shows all records, whatever search is in force.
  void removeAdded(TrecordIndex index);
  /// Adds copies of the records of some rows, without their control numbers, at the end of table and view. There must
  /// be room. Returns the rows of the copies.
  TrowRange copy(const TrowRange& rows);
  /// Removes the records of some rows, and shows the others, or those of them that the search in force finds.
  void remove(const TrowRange& rows);

 private:
  TequipRecTable records_;
  TtestProcTable titles_;
  Tview view_{records_, titles_};
  TcolumnLayout columns_;
  TrecordSearch search_{records_, titles_};
  TsearchTexts searchTexts_;
  bool searchActive_ = false;
};
