#include "bench/bareImport.h"

#include <fstream>
#include <functional>
#include <string>
#include <utility>

#include "bench/measure.h"
#include "store/listChange.h"
#include "support/windows1252.h"

namespace {

using Tcell = std::function<std::string(std::string_view)>;

std::filesystem::path makeImportFile(const TbenchFolders& folders, std::size_t count, const std::string& ending,
                                     char delimiter, const Tcell& cell) {
  const TequipRecTable records = fullTable(folders);
  auto path = folders.scratch / (std::to_string(count) + ending);
  std::ofstream file(path, std::ios::binary);
  for (std::size_t i = 0; i < count; ++i) {
    const TequipRec& record = records.at(static_cast<TrecordIndex>(i % records.count()));
    file << cell("EQ-" + std::to_string(i));
    for (int field = fieldDescription; field < fieldCount; ++field) file << delimiter << cell(record.text(field));
    file << delimiter << record.testProc() << '\n';
  }
  require(file.good(), "the file to import cannot be written");
  return path;
}

}  // namespace

bool TeverOnward::goOn(int /*percent*/) {
  return true;
}

TimportObserver::Tduplicate TeverOnward::duplicate(std::string& /*deviceId*/) {
  return Tduplicate::skipped;
}

std::filesystem::path makeLines(const TbenchFolders& folders, std::size_t count) {
  return makeImportFile(folders, count, ".txt", '\t', [](std::string_view text) { return std::string(text); });
}

TimportOptions optionsOfLines(const std::filesystem::path& path) {
  return {path, '\t', 1, false};
}

std::filesystem::path makeSpreadsheet(const TbenchFolders& folders, std::size_t count) {
  return makeImportFile(folders, count, ".csv", ';', [](std::string_view text) {
    return '"' + fromRecordText(text).replace(u'"', QStringLiteral("\"\"")).toUtf8().toStdString() + '"';
  });
}

TimportOptions optionsOfSpreadsheet(const std::filesystem::path& path) {
  return {path, ';', 1, false, true};
}

double importBare(const TimportOptions& options, std::size_t expected) {
  TequipRecTable records;
  TeverOnward observer;
  return millisecondsOf([&] {
    TimportRun run = runImport(options, eachColumn, importColumns, records, observer);
    applyChange(records, TlistChange::append(records.count(), std::move(run.records)));
    require(records.count() == expected, "not all records were imported");
  });
}
