#include "print/reportTable.h"

#include <utility>

#include "support/recordText.h"
#include "testproc/autosequenceFileStructs.h"

namespace {

// What a column shows that is no text field of the record.
constexpr int recordNumber = -1;
constexpr int testProcNumber = -2;
constexpr int testProcTitle = -3;

}  // namespace

TreportTable::TreportTable(const TprintJob& job, std::vector<TrecordIndex> rows, const TprintSettings& settings)
    : records_(job.records), titles_(job.titles), rows_(std::move(rows)) {
  const std::array<Tcolumn, printFieldCount> columns = {{{fieldControlNum, "Control Number"},
                                                         {fieldDescription, "Description"},
                                                         {fieldManufacturer, "Manufacturer"},
                                                         {fieldModel, "Model"},
                                                         {testProcNumber, "Test Procedure"},
                                                         {testProcTitle, "Test Procedure Title"},
                                                         {fieldCustom1, job.customNames[0]},
                                                         {fieldCustom2, job.customNames[1]},
                                                         {fieldCustom3, job.customNames[2]}}};
  columns_.push_back({recordNumber, "No."});
  for (std::size_t i = 0; i < printFieldCount; ++i) {
    if (settings.fields[i]) columns_.push_back(columns[i]);
  }
}

bool TreportTable::isNumber(std::size_t column) const {
  const int source = columns_[column].source;
  return source == recordNumber || source == testProcNumber;
}

std::string TreportTable::text(std::size_t row, std::size_t column) const {
  const TequipRec& record = records_.at(rows_[row]);
  switch (columns_[column].source) {
    case recordNumber:
      return std::to_string(rows_[row] + 1);
    case testProcNumber:
      return std::to_string(record.testProc());
    case testProcTitle:
      return std::string(trimmedText(titles_.title(record.testProc())));
    default:
      return std::string(trimmedText(record.text(columns_[column].source)));
  }
}
