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
  records_.append(TequipRec());
  view_.append(index);
  return index;
}

void TrecordList::removeAdded(TrecordIndex index) {
  records_.remove(index);
  view_.showAll();
}

TrowRange TrecordList::copy(const TrowRange& rows) {
  const std::size_t firstNew = view_.count();
  records_.reserve(records_.count() + rows.count());
  for (std::size_t row = rows.top; row <= rows.bottom; ++row) {
    TequipRec record = records_.at(view_.at(row));
    record.setText(fieldControlNum, "");
    view_.append(static_cast<TrecordIndex>(records_.count()));
    records_.append(std::move(record));
  }
  return {firstNew, view_.count() - 1};
}

void TrecordList::remove(const TrowRange& rows) {
  std::vector<TrecordIndex> indices;
  for (std::size_t row = rows.top; row <= rows.bottom; ++row) indices.push_back(view_.at(row));
  std::sort(indices.begin(), indices.end());
  records_.remove(indices);
  view_.showAll();
  if (searchActive_ && !view_.isEmpty() && !searchTexts_.isEmpty()) {
    view_.show(search_.find(searchTexts_));
  }
}
