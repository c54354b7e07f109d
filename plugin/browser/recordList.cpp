#include "browser/recordList.h"

#include <algorithm>
#include <iterator>

#include "browser/settings.h"
#include "support/recordText.h"

namespace {

bool replacesOnly(const TlistChange& change, TrecordIndex index) {
  return std::all_of(change.steps().begin(), change.steps().end(), [index](const TlistStep& step) {
    const auto* replaced = std::get_if<TreplaceRecord>(&step);
    return replaced != nullptr && replaced->index == index;
  });
}

}  // namespace

void TrecordList::setRecords(TequipRecTable records) {
  records_ = std::move(records);
  added_.reset();
  counts_.reset();
  steps_.clear();
}

/// Adds what a step is going to do. The first thing stored in a record that is being added is its addition.
void TrecordList::addEdits(const TlistStep& step, TlistEdits& edits) {
  if (!counts_) counts_.emplace(records_);
  const auto* replaced = std::get_if<TreplaceRecord>(&step);
  const bool isAddition = added_ && !isAddedStored_ && replaced != nullptr && replaced->index == *added_;
  isAddedStored_ = isAddedStored_ || isAddition;
  TlistEdits added = isAddition ? editsOf(TinsertRecords{{replaced->index}, {replaced->record}}, records_, *counts_)
                                : editsOf(step, records_, *counts_);
  std::move(added.begin(), added.end(), std::back_inserter(edits));
}

TlistChange TrecordList::change(TlistChange change, const TeditListener& listener) {
  TlistEdits edits;
  TlistChange inverse = applyChange(records_, std::move(change), [&](const TlistStep& step) { addEdits(step, edits); });
  if (listener && !edits.empty()) listener(edits);
  return inverse;
}

TlistChange TrecordList::change(TlistChange change) {
  return this->change(std::move(change), editListener_);
}

TlistEdits TrecordList::restore(TlistChange change) {
  TlistEdits restored;
  steps_.add(TstepKind::restoration,
             this->change(std::move(change), [&](const TlistEdits& edits) { restored = edits; }));
  return restored;
}

void TrecordList::makeStep(TstepKind kind, TlistChange change) {
  const bool belongsToAddition = added_ && replacesOnly(change, *added_);
  TlistChange inverse = this->change(std::move(change));
  if (!belongsToAddition) steps_.add(kind, std::move(inverse));
}

TstepShown TrecordList::goStep(TstepWay way, TsortOrder& order) {
  const TtouchedRecords touched = touchedBy(steps_.next(way), records_.count());
  auto removed = rowsOf(touched.removed);
  steps_.go(way);
  showFound();
  const bool leavesNone = std::find(touched.present.begin(), touched.present.end(), true) == touched.present.end();
  const bool hidesAll = isSearchInForce() && !leavesNone && !rowsOf(touched.present);
  if (hidesAll) clearSearch();
  sort(order);
  if (!leavesNone) return {rowsOf(touched.present), hidesAll};
  if (removed) removed->top = std::min(removed->top, std::max<std::size_t>(view_.count(), 1) - 1);
  return {removed ? std::optional(TrowRange{removed->top, removed->top}) : std::nullopt, false};
}

std::optional<TrowRange> TrecordList::rowsOfNewestStep() const {
  TtouchedRecords touched = touchedBy(steps_.next(TstepWay::undo), records_.count());
  std::transform(touched.removed.begin(), touched.removed.end(), touched.replaced.begin(), touched.removed.begin(),
                 std::logical_or<>());
  return rowsOf(touched.removed);
}

void TrecordList::changeColumns(const TbrowserSettings& settings, TsortOrder& order) {
  const TcolumnId sortedBy = columns_.id(order.column);
  columns_.build(settings);
  const int column = columns_.index(sortedBy);
  order = column < 0 ? TsortOrder{} : TsortOrder{column, order.ascending};
}

void TrecordList::sort(TsortOrder& order) {
  view_.sort(sortColumnId(order, columns_), order.ascending);
}

bool TrecordList::search(const TsearchTexts& texts) {
  if (view_.isEmpty()) return false;
  searchTexts_ = texts;
  searchActive_ = true;
  if (texts.isEmpty()) return true;
  attentionSought_ = false;
  view_.show(found());
  return true;
}

std::vector<TrecordIndex> TrecordList::withControlNum(std::string_view controlNum) const {
  const std::string_view sought = trimmedText(controlNum);
  std::vector<TrecordIndex> records;
  for (TrecordIndex i = 0; i < records_.count(); ++i) {
    if (trimmedText(records_.at(i).text(fieldControlNum)) == sought) records.push_back(i);
  }
  return records;
}

void TrecordList::searchAttention() {
  searchTexts_ = {};
  searchActive_ = true;
  attentionSought_ = true;
  view_.show(found());
}

std::vector<TrecordIndex> TrecordList::found() {
  return attentionSought_ ? attention_.records() : search_.find(searchTexts_);
}

std::optional<TcolumnId> TrecordList::hiddenColumnFound() const {
  if (!isSearchInForce() || attentionSought_ || view_.isEmpty()) return std::nullopt;
  const std::vector<TcolumnId> found = columnsFound(searchTexts_, view_.recordAt(0));
  const bool isSeen = std::any_of(found.begin(), found.end(), [this](TcolumnId id) { return columns_.index(id) >= 0; });
  return isSeen || found.empty() ? std::nullopt : std::optional(found.front());
}

std::string TrecordList::searchInWords() const {
  if (!isSearchInForce()) return {};
  return attentionSought_ ? "records that need attention" : inWords(searchTexts_);
}

void TrecordList::clearSearch() {
  searchActive_ = false;
  attentionSought_ = false;
  view_.showAll();
}

void TrecordList::showFound() {
  view_.showAll();
  if (isSearchInForce() && !view_.isEmpty()) view_.show(found());
}

/// The rows of the chosen records; the first of them alone if the rows are not adjacent.
std::optional<TrowRange> TrecordList::rowsOf(const std::vector<bool>& chosen) const {
  std::optional<TrowRange> rows;
  std::size_t found = 0;
  for (std::size_t row = 0; row < view_.count(); ++row) {
    if (!chosen[view_.at(row)]) continue;
    ++found;
    if (!rows) rows = TrowRange{row, row};
    rows->bottom = row;
  }
  if (rows && rows->count() != found) rows->bottom = rows->top;
  return rows;
}

std::optional<TrowRange> TrecordList::rowsOf(const std::vector<TrecordIndex>& records) const {
  std::vector<bool> chosen(records_.count());
  for (const TrecordIndex index : records) chosen[index] = true;
  return rowsOf(chosen);
}

std::vector<TrecordIndex> TrecordList::recordsIn(const TrowRange& rows) const {
  std::vector<TrecordIndex> records;
  for (std::size_t row = rows.top; row <= rows.bottom; ++row) records.push_back(view_.at(row));
  return records;
}

bool TrecordList::hasRoomFor(std::size_t count) const {
  return records_.count() + count <= equipRecLimit;
}

TrecordIndex TrecordList::addBlank() {
  const auto index = static_cast<TrecordIndex>(records_.count());
  if (!counts_) counts_.emplace(records_);
  applyChange(records_, TlistChange::append(index, std::vector<TequipRec>(1)));
  view_.append(index);
  added_ = index;
  isAddedStored_ = false;
  return index;
}

void TrecordList::keepAdded(TrecordIndex index) {
  if (!isAddedStored_) change(TlistChange(TreplaceRecord{index, records_.at(index)}));
  added_.reset();
  steps_.add(TstepKind::addition, TlistChange(TremoveRecords{{index}}));
}

void TrecordList::removeAdded(TrecordIndex index) {
  added_.reset();
  TlistChange removal(TremoveRecords{{index}});
  isAddedStored_ ? change(std::move(removal)) : applyChange(records_, std::move(removal));
  view_.showAll();
}

void TrecordList::settleAdded() {
  if (!added_) return;
  isAddedStored_ ? keepAdded(*added_) : removeAdded(*added_);
}

TrowRange TrecordList::copy(const TrowRange& rows) {
  const std::size_t firstNew = view_.count();
  const std::size_t count = records_.count();
  std::vector<TequipRec> copies;
  copies.reserve(rows.count());
  for (std::size_t row = rows.top; row <= rows.bottom; ++row) {
    view_.append(static_cast<TrecordIndex>(count + copies.size()));
    copies.push_back(records_.at(view_.at(row)));
    copies.back().setText(fieldControlNum, "");
  }
  makeStep(TstepKind::copying, TlistChange::append(count, std::move(copies)));
  return {firstNew, view_.count() - 1};
}

std::size_t TrecordList::assign(const TrowRange& rows, const Tassignment& assignment) {
  TlistChange change;
  for (const TrecordIndex index : recordsIn(rows)) {
    TequipRec changed = records_.at(index);
    if (assignment.column == columnTestProc) {
      changed.setTestProc(assignment.testProc);
    } else {
      changed.setText(assignment.column, assignment.text);
    }
    if (!(changed == records_.at(index))) change.add(TreplaceRecord{index, std::move(changed)});
  }
  const std::size_t count = change.steps().size();
  if (count > 0) makeStep(TstepKind::change, std::move(change));
  return count;
}

void TrecordList::remove(const TrowRange& rows) {
  std::vector<TrecordIndex> indices = recordsIn(rows);
  std::sort(indices.begin(), indices.end());
  makeStep(TstepKind::deletion, TlistChange(TremoveRecords{std::move(indices)}));
  showFound();
}
