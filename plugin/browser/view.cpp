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

std::string Tview::cellText(std::size_t position, TcolumnId column) const {
  const TrecordIndex index = indices_[position];
  const TequipRec& record = records_.at(index);
  return columnText(column, {index, record, titles_.title(record.testProc())});
}
