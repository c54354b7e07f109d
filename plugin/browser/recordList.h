#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "browser/attention.h"
#include "browser/columnLayout.h"
#include "browser/search.h"
#include "browser/undoSteps.h"
#include "browser/view.h"
#include "store/listChange.h"
#include "store/recordEdits.h"
#include "support/gridLayout.h"
#include "testproc/autosequenceFileStructs.h"

/// The rows of the grid from `top` to `bottom`, both included, counted from 0.
struct TrowRange {
  std::size_t top = 0;
  std::size_t bottom = 0;

  std::size_t count() const { return bottom - top + 1; }
};

/// What several records are to get in one field.
struct Tassignment {
  TcolumnId column = fieldDescription;  ///< a text field, or `columnTestProc`
  std::string text;                     ///< for a text field
  unsigned testProc = minTestProc;      ///< for `columnTestProc`
};

/// What to show after a step was undone or redone.
struct TstepShown {
  /// The rows to select: those of the records that the step left, or the first of them if others lie between. If it
  /// left none, the row that follows the removed ones. Nothing if no removed record was shown.
  std::optional<TrowRange> rows;
  bool searchCleared = false;
};

/// The records, the view and the columns, and what the user's commands do to them. It knows no window: the caller of a
/// change refills the grid.
class TrecordList {
 public:
  const TequipRecTable& records() const { return records_; }
  /// Replaces all records. The view must be rebuilt afterwards.
  void setRecords(TequipRecTable records);
  /// Makes a change and returns the one that takes it back. The view stays as it is. Every change goes through here.
  TlistChange change(TlistChange change);
  /// Who gets each change as edits, right after it was made. A record that is being added is no change before it is
  /// stored or kept.
  using TeditListener = std::function<void(const TlistEdits& edits)>;
  void setEditListener(TeditListener listener) { editListener_ = std::move(listener); }
  /// Makes a change that the user can undo as one step. The view stays as it is. A change of the record that is being
  /// added belongs to its addition.
  void makeStep(TstepKind kind, TlistChange change);
  const TundoSteps& steps() const { return steps_; }
  /// Makes a change that brings back unsaved work, as one step. Returns its edits, which the listener does not get.
  TlistEdits restore(TlistChange change);
  /// Undoes or redoes the next step, of which there must be one. Shows the records that the search in force finds, or
  /// all if it would hide those that the step left; then the search is cleared. Sorts the view.
  TstepShown goStep(TstepWay way, TsortOrder& order);
  /// The rows of the records that the newest step has left, as `TstepShown::rows`. There must be a step.
  std::optional<TrowRange> rowsOfNewestStep() const;

  TtestProcTable& titles() { return titles_; }
  const TtestProcTable& titles() const { return titles_; }
  const Tview& view() const { return view_; }
  const TcolumnLayout& columns() const { return columns_; }
  Tattention& attention() { return attention_; }
  /// The records in these rows, from top to bottom.
  std::vector<TrecordIndex> recordsIn(const TrowRange& rows) const;

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
  /// The records with exactly this control number (Windows-1252), blanks at its ends apart, in table order.
  std::vector<TrecordIndex> withControlNum(std::string_view controlNum) const;
  /// Shows the records that need attention, as a search shows those that it finds.
  void searchAttention();
  /// Whether a search decides which records are shown.
  bool isSearchInForce() const { return searchActive_ && (attentionSought_ || !searchTexts_.isEmpty()); }
  /// A column that the grid does not have, in which the search in force has found the first record shown; nothing if a
  /// column of the grid shows why it was found.
  std::optional<TcolumnId> hiddenColumnFound() const;
  /// The rows of these records, or the first of them if others lie between; nothing if none is shown.
  std::optional<TrowRange> rowsOf(const std::vector<TrecordIndex>& records) const;
  /// What decides which records are shown, in words; empty if all are.
  std::string searchInWords() const;
  /// Shows all records and forgets the search.
  void clearSearch();

  /// Whether `count` more records fit into the table.
  bool hasRoomFor(std::size_t count) const;
  /// Adds a blank record at the end of table and view, and returns its index. It must fit. `keepAdded` or
  /// `removeAdded` comes next.
  TrecordIndex addBlank();
  /// Makes the addition a step, together with what the record has become meanwhile.
  void keepAdded(TrecordIndex index);
  /// Removes a record that was just added, and shows all records, even if a search is in force.
  void removeAdded(TrecordIndex index);
  bool isAdding() const { return added_.has_value(); }
  /// Nobody will decide about the record that is being added, if there is one: it stays if it was stored.
  void settleAdded();
  /// Adds copies of the records in these rows, without their control numbers, at the end of table and view. They must
  /// fit. Returns the rows of the copies.
  TrowRange copy(const TrowRange& rows);
  /// Changes the records in these rows as one step. Returns how many of them are different now. The view stays.
  std::size_t assign(const TrowRange& rows, const Tassignment& assignment);
  /// Removes the records in these rows, and shows the others or, if a search is in force, those of them that it finds.
  void remove(const TrowRange& rows);

 private:
  void showFound();
  std::vector<TrecordIndex> found();
  void addEdits(const TlistStep& step, TlistEdits& edits);
  TlistChange change(TlistChange change, const TeditListener& listener);
  std::optional<TrowRange> rowsOf(const std::vector<bool>& chosen) const;

  TequipRecTable records_;
  TtestProcTable titles_;
  Tview view_{records_, titles_};
  TcolumnLayout columns_;
  TrecordSearch search_{records_, titles_};
  Tattention attention_{records_, titles_};
  TsearchTexts searchTexts_;
  bool searchActive_ = false;
  bool attentionSought_ = false;         ///< the search is for what needs attention, not for texts
  std::optional<TrecordIndex> added_;    ///< the record that is being added
  bool isAddedStored_ = false;           ///< the user has stored something in it
  std::optional<TrecordCounts> counts_;  ///< of all records but an added one that is not stored; made when needed
  TeditListener editListener_;
  TundoSteps steps_{[this](TlistChange change) { return this->change(std::move(change)); }};
};
