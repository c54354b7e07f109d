#include "print/reportTable.h"

#include <utility>

#include "testproc/autosequenceFileStructs.h"

TreportTable::TreportTable(const TprintJob& job, std::vector<TrecordIndex> rows, const TprintSettings& settings)
    : records_(job.records), titles_(job.titles), captions_(job.captions), search_(job.search), rows_(std::move(rows)) {
  columns_.push_back(columnNumber);
  for (std::size_t i = 0; i < printColumnCount; ++i) {
    if (settings.printed[i]) columns_.push_back(printColumns[i].id);
  }
}

bool TreportTable::isNumber(std::size_t column) const {
  return columns_[column] == columnNumber || columns_[column] == columnTestProc;
}

std::string TreportTable::text(std::size_t row, std::size_t column) const {
  const TrecordIndex index = rows_[row];
  const TequipRec& record = records_.at(index);
  return columnText(columns_[column], {index, record, titles_.title(record.testProc())});
}
