#include "browser/recordList.h"

#include <algorithm>

#include "browser/settings.h"

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
  if (!texts.isEmpty()) view_.show(search_.find(texts));
  return true;
}

void TrecordList::clearSearch() {
  searchActive_ = false;
  view_.showAll();
}

bool TrecordList::hasRoomFor(std::size_t count) const {
  return records_.count() + count <= equipRecLimit;
}

TrecordIndex TrecordList::addBlank() {
  const auto index = static_cast<TrecordIndex>(records_.count());
  change(TlistChange::append(index, std::vector<TequipRec>(1)));
  view_.append(index);
  return index;
}

void TrecordList::removeAdded(TrecordIndex index) {
  change(TlistChange(TremoveRecords{{index}}));
  view_.showAll();
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
  change(TlistChange::append(count, std::move(copies)));
  return {firstNew, view_.count() - 1};
}

void TrecordList::remove(const TrowRange& rows) {
  std::vector<TrecordIndex> indices;
  for (std::size_t row = rows.top; row <= rows.bottom; ++row) indices.push_back(view_.at(row));
  std::sort(indices.begin(), indices.end());
  change(TlistChange(TremoveRecords{std::move(indices)}));
  view_.showAll();
  if (searchActive_ && !view_.isEmpty() && !searchTexts_.isEmpty()) {
    view_.show(search_.find(searchTexts_));
  }
}
