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

/// The records, the view and the columns, and what the user's commands do to them. It knows no window: the caller of a
/// change refills the grid.
class TrecordList {
 public:
  const TequipRecTable& records() const { return records_; }
  /// Replaces all records. The view must be rebuilt afterwards.
  void setRecords(TequipRecTable records) { records_ = std::move(records); }
  /// Makes a change and returns the one that takes it back. The view stays as it is.
  TlistChange change(TlistChange change) { return applyChange(records_, std::move(change)); }

  TtestProcTable& titles() { return titles_; }
  const TtestProcTable& titles() const { return titles_; }
  const Tview& view() const { return view_; }
  const TcolumnLayout& columns() const { return columns_; }

  /// Builds the columns that the settings ask for.
  void buildColumns(const TbrowserSettings& settings) { columns_.build(settings); }
  /// Rebuilds the columns of a sorted list. It stays sorted by its column if that still exists; otherwise the order
  /// becomes the first column, ascending.
  void changeColumns(const TbrowserSettings& settings, TsortOrder& order);

  /// Sorts the view. A sort column that does not exist becomes column 0.
  void sort(TsortOrder& order);

  /// Searches all records, shows those found and remembers the texts. If the view is empty, does nothing and returns
  /// false. If all texts are empty, the view stays.
  bool search(const TsearchTexts& texts);
  /// Shows all records and forgets the search.
  void clearSearch();

  /// Whether `count` more records fit into the table.
  bool hasRoomFor(std::size_t count) const;
  /// Adds a blank record at the end of table and view, and returns its index. It must fit.
  TrecordIndex addBlank();
  /// Removes a record that was just added, and shows all records, even if a search is in force.
  void removeAdded(TrecordIndex index);
  /// Adds copies of the records in these rows, without their control numbers, at the end of table and view. They must
  /// fit. Returns the rows of the copies.
  TrowRange copy(const TrowRange& rows);
  /// Removes the records in these rows, and shows the others or, if a search is in force, those of them that it finds.
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
