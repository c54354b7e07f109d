#include "browser/csvExport.h"

#include <string>

#include "browser/view.h"
#include "store/columns.h"
#include "support/lineFile.h"
#include "testproc/autosequenceFileStructs.h"

namespace {

/// A line of what each column gives for it.
template <typename TextOf>
void makeLine(std::string& line, TextOf textOf) {
  line.clear();
  for (const Tcolumn& column : allColumns) {
    if (!line.empty()) line += ',';
    line += textOf(column);
  }
  line += '\n';
}

}  // namespace

TexportResult exportRecords(const Tview& view, const TtestProcTable& titles, const std::filesystem::path& path) {
  const auto file = TlineFile::create(path);
  if (!file) return TexportResult::notOpened;
  if (view.isEmpty()) return TexportResult::nothingShown;
  std::string line;
  makeLine(line, [](const Tcolumn& column) { return '<' + std::string(column.exportName) + '>'; });
  file->write(line);
  for (std::size_t position = 0; position < view.count(); ++position) {
    const TequipRec& record = view.records().at(view.at(position));
    const TrecordView exported{view.at(position), record, titles.title(record.testProc())};
    makeLine(line, [&](const Tcolumn& column) { return exportText(column.id, exported); });
    file->write(line);
  }
  return TexportResult::done;
}
