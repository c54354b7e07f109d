#include "browser/csvExport.h"

#include <string>

#include "browser/view.h"
#include "store/datastructs.h"
#include "support/lineFile.h"
#include "testproc/autosequenceFileStructs.h"

namespace {

// The misspelling is part of the format.
constexpr const char* headingLine =
    "<index>,<control nun>,<description>,<manufacturer>,<model>,<test procedure num>,<test procedure title>,"
    "<custom1>,<custom2>,<custom3>\n";

void formatLine(TrecordIndex index, const TequipRec& record, const TtestProcTable& titles, std::string& line) {
  line = std::to_string(index);
  for (const int field : {fieldControlNum, fieldDescription, fieldManufacturer, fieldModel}) {
    line.append(1, ',').append(record.text(field));
  }
  line.append(1, ',').append(std::to_string(record.testProc()));
  line.append(1, ',').append(titles.title(record.testProc()));
  for (const int field : {fieldCustom1, fieldCustom2, fieldCustom3}) line.append(1, ',').append(record.text(field));
  line.append(1, '\n');
}

}  // namespace

TexportResult exportRecords(const Tview& view, const TtestProcTable& titles, const std::filesystem::path& path) {
  const auto file = TlineFile::create(path);
  if (!file) return TexportResult::notOpened;
  if (view.isEmpty()) return TexportResult::nothingToExport;
  file->write(headingLine);
  std::string line;
  for (std::size_t position = 0; position < view.count(); ++position) {
    formatLine(view.at(position), view.records().at(view.at(position)), titles, line);
    file->write(line);
  }
  return TexportResult::done;
}
