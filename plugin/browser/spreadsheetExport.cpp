#include "browser/spreadsheetExport.h"

#include <string>
#include <string_view>
#include <utility>

#include "import/headings.h"
#include "support/csvLine.h"
#include "support/windows1252.h"

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

/// A row of what each column gives for it, but for the columns that are no part of a record.
template <typename TextOf>
std::string rowOf(TextOf textOf) {
  std::string row;
  bool isFirst = true;
  for (const Tcolumn& column : allColumns) {
    if (column.id == columnNumber || column.id == columnTitle) continue;
    addCsvCell(row, textOf(column.id), std::exchange(isFirst, false));
  }
  return row + "\r\n";
}

std::size_t fieldOf(TcolumnId column) {
  return column == columnTestProc ? importTestProc : column;
}

}  // namespace

Toutcome writeSpreadsheet(TfileSystem& files, const std::filesystem::path& path, const TequipRecTable& records,
                          const std::vector<TrecordIndex>& which, const Tcaptions& captions) {
  std::string content = rowOf([&](TcolumnId column) { return writtenHeading(fieldOf(column), captions); });
  for (const TrecordIndex index : which) {
    content += rowOf([&](TcolumnId column) { return exportText(column, {index, records.at(index), {}}); });
  }
  return replaceFile(files, path, std::string(utf8Mark) + fromRecordText(content).toUtf8().toStdString());
}
