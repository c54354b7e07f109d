#include "browser/csvExport.h"

#include <cerrno>
#include <fstream>
#include <string>
#include <system_error>

#include "browser/view.h"
#include "store/columns.h"
#include "support/failure.h"
#include "support/log.h"
#include "support/paths.h"
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

void logFailed(const char* operation, const std::filesystem::path& path) {
  logFailure(Tfailure{operation, pathText(path), std::generic_category().message(errno)}.text());
}

}  // namespace

TexportResult exportRecords(const Tview& view, const TtestProcTable& titles, const std::filesystem::path& path) {
  std::ofstream file(path);
  if (!file) {
    logFailed("open", path);
    return TexportResult::notOpened;
  }
  if (view.isEmpty()) return TexportResult::nothingShown;
  std::string line;
  makeLine(line, [](const Tcolumn& column) { return '<' + std::string(column.exportName) + '>'; });
  file << line << std::flush;
  for (std::size_t position = 0; file && position < view.count(); ++position) {
    const TequipRec& record = view.records().at(view.at(position));
    const TrecordView exported{view.at(position), record, titles.title(record.testProc())};
    makeLine(line, [&](const Tcolumn& column) { return exportText(column.id, exported); });
    file << line << std::flush;
  }
  file.close();
  if (!file) logFailed("write", path);
  return TexportResult::done;
}
