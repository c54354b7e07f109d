#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <fstream>
#include <memory>

#include "bench/program.h"
#include "bench/rows.h"
#include "import/columnMapping.h"
#include "import/columnMappingForm.h"
#include "import/importOptions.h"
#include "import/importRun.h"
#include "store/datastructs.h"
#include "store/listChange.h"
#include "support/iniFile.h"
#include "tools/recordChanges.h"

namespace {

constexpr std::size_t almostFull = equipRecLimit - 1;  // avoids the message about the limit
constexpr std::size_t manyLines = 1'000'000;
constexpr std::size_t columnCount = 8;
constexpr TcolumnMapping eachColumn = {{1, 2, 3, 4, 5, 6, 7, 8}};
constexpr double longestGap = 100;  // milliseconds

/// Repeats the records of the full list up to `count` lines, each with a Device ID of its own.
std::filesystem::path makeFile(const TbenchFolders& folders, std::size_t lineCount) {
  const TequipRecTable records = fullTable(folders);
  auto path = folders.scratch / (std::to_string(lineCount) + ".txt");
  std::ofstream file(path, std::ios::binary);
  for (std::size_t i = 0; i < lineCount; ++i) {
    const TequipRec& record = records.at(static_cast<TrecordIndex>(i % records.count()));
    file << "EQ-" << i;
    for (int field = fieldDescription; field < fieldCount; ++field) file << '\t' << record.text(field);
    file << '\t' << record.testProc() << '\n';
  }
  require(file.good(), "the file to import cannot be written");
  return path;
}

TimportOptions optionsOf(const std::filesystem::path& path) {
  return {path, '\t', 1, false};
}

class TeverOnward : public TimportObserver {
 public:
  bool goOn(int /*percent*/) override { return true; }
  Tduplicate duplicate(std::string& /*deviceId*/) override { return Tduplicate::stop; }
};

/// An import without windows, including adding the records to the table.
double importBare(const std::filesystem::path& path, std::size_t expected = equipRecLimit) {
  TequipRecTable records;
  TeverOnward observer;
  return millisecondsOf([&] {
    TimportRun run = runImport(optionsOf(path), eachColumn, columnCount, records, observer);
    applyChange(records, TlistChange::append(records.count(), std::move(run.records)));
    require(records.count() == expected, "not all records were imported");
  });
}

/// The same import as the user experiences it.
struct TseenImport {
  double milliseconds = 0;  ///< from pressing Import to the success state
  double longestGap = 0;    ///< milliseconds without handling an event
};

/// Watches the event loop, and ends the import when it waits for OK.
class Twatcher : public QObject {
 public:
  Twatcher() {
    connect(&timer_, &QTimer::timeout, this, &Twatcher::tick);
    timer_.start(0);
    sinceTick_.start();
    sinceStart_.start();
  }
  TseenImport seen() const { return seen_; }

 private:
  void tick() {
    seen_.longestGap = std::max(seen_.longestGap, double(sinceTick_.nsecsElapsed()) / 1e6);
    sinceTick_.start();
    const QWidget* dialog = QApplication::activeModalWidget();
    auto* ok = dialog != nullptr ? dialog->findChild<QPushButton*>(QStringLiteral("BtnOK")) : nullptr;
    if (ok == nullptr || !ok->isEnabled()) return;
    timer_.stop();
    seen_.milliseconds = double(sinceStart_.nsecsElapsed()) / 1e6;
    ok->click();
  }

  QTimer timer_;
  QElapsedTimer sinceTick_;
  QElapsedTimer sinceStart_;
  TseenImport seen_;
};

TseenImport importSeen(const TbenchFolders& folders, const std::filesystem::path& path) {
  const TiniFile ini(folders.scratch / "import.ini");
  eachColumn.save(ini);
  TtestList list;
  auto result = TimportResult::cancelled;
  TEquipRecImport form(optionsOf(path), list, ini, result, nullptr);
  form.show();
  QApplication::processEvents();
  const Twatcher watcher;
  form.findChild<QPushButton*>(QStringLiteral("BtnImport"))->click();
  require(list.table.count() == almostFull, "not all records were imported through the dialogs");
  return watcher.seen();
}

Tsides prepareEngine(const TbenchFolders& folders) {
  const auto path = makeFile(folders, equipRecLimit);
  const auto output = folders.scratch / "sqlite.txt";
  // The start of the program is not counted.
  const auto sqlite = [=] {
    const std::string import = ".import \"" + path.string() + "\" t";
    const double whole = runProgram({"sqlite3", ":memory:", ".mode tabs", import}, "/dev/null", output);
    return whole - runProgram({"sqlite3", ":memory:", ".mode tabs"}, "/dev/null", output);
  };
  return {[=] { return importBare(path); }, sqlite};
}

Tsides prepareSeen(const TbenchFolders& folders) {
  const auto path = makeFile(folders, almostFull);
  return {[=] { return importSeen(folders, path).milliseconds; }, [=] { return importBare(path, almostFull); }};
}

Tsides prepareGap(const TbenchFolders& folders) {
  const auto path = makeFile(folders, almostFull);
  return {[=] { return importSeen(folders, path).longestGap; }, [] { return longestGap; }};
}

Tsides prepareLimit(const TbenchFolders& folders) {
  const auto full = makeFile(folders, equipRecLimit);
  const auto many = makeFile(folders, manyLines);
  return {[=] { return importBare(many); }, [=] { return importBare(full); }};
}

}  // namespace

std::vector<Trow> importRows(const TbenchFolders& folders) {
  return {{"import", "ms", 1.0 / 3, 15, [folders] { return prepareEngine(folders); }},
          {"import-dialogs", "ms", 3.0, 15, [folders] { return prepareSeen(folders); }},
          {"import-dialogs-gap", "ms", 1.0, 15, [folders] { return prepareGap(folders); }},
          {"import-million-lines", "ms", 1.5, 15, [folders] { return prepareLimit(folders); }}};
}
