#include "browser/view.h"

#include <numeric>

#include "browser/columnLayout.h"
#include "support/gridLayout.h"
#include "testproc/autosequenceFileStructs.h"

TcolumnId sortColumnId(TsortOrder& order, const TcolumnLayout& columns) {
  if (columns.id(order.column) == columnNotFound) order.column = columns.index(columnNumber);
  return columns.id(order.column);
}

void Tview::showAll() {
  indices_.resize(records_.count());
  std::iota(indices_.begin(), indices_.end(), TrecordIndex{0});
}

TrecordView Tview::recordAt(std::size_t position) const {
  const TrecordIndex index = indices_[position];
  const TequipRec& record = records_.at(index);
  return {index, record, titles_.title(record.testProc())};
}

std::string Tview::cellText(std::size_t position, TcolumnId column) const {
  return columnText(column, recordAt(position));
}
