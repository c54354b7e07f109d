#include "browser/spreadsheetExport.h"

#include <string>
#include <string_view>

#include "import/headings.h"
#include "support/recordText.h"
#include "support/windows1252.h"

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

/// Blanks at the ends are in quotes, too, because many programs drop them otherwise.
bool needsQuotes(std::string_view text) {
  return text.find_first_of(",\"\r\n") != std::string_view::npos || trimmedText(text).size() < text.size();
}

std::string cellOf(std::string_view text) {
  if (!needsQuotes(text)) return std::string(text);
  std::string quoted = "\"";
  for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + '"';
}

/// A row of what each column gives for it, but for the columns that are no part of a record.
template <typename TextOf>
std::string rowOf(TextOf textOf) {
  std::string row;
  for (const Tcolumn& column : allColumns) {
    if (column.id == columnNumber || column.id == columnTitle) continue;
    if (!row.empty()) row += ',';
    row += cellOf(textOf(column.id));
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
