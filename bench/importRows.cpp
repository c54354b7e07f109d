#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "bench/bareImport.h"
#include "bench/program.h"
#include "bench/rows.h"
#include "import/columnMappingForm.h"
#include "support/iniFile.h"
#include "tools/recordChanges.h"

namespace {

constexpr std::size_t almostFull = equipRecLimit - 1;  // avoids the message about the limit
constexpr std::size_t manyLines = 1'000'000;
constexpr double longestGap = 100;  // milliseconds

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
  TEquipRecImport form(optionsOfLines(path), list, ini, result, nullptr);
  form.show();
  QApplication::processEvents();
  const Twatcher watcher;
  form.findChild<QPushButton*>(QStringLiteral("BtnImport"))->click();
  require(list.table.count() == almostFull, "not all records were imported through the dialogs");
  return watcher.seen();
}

/// Without the start of the program.
double importBySqlite(const std::filesystem::path& path, const std::vector<std::string>& settings,
                      const std::filesystem::path& output) {
  std::vector<std::string> command = {"sqlite3", ":memory:"};
  command.insert(command.end(), settings.begin(), settings.end());
  const double start = runProgram(command, "/dev/null", output);
  command.push_back(".import \"" + path.string() + "\" t");
  return runProgram(command, "/dev/null", output) - start;
}

Tsides prepareEngine(const TbenchFolders& folders) {
  const auto path = makeLines(folders, equipRecLimit);
  const auto output = folders.scratch / "sqlite.txt";
  return {[=] { return importBare(optionsOfLines(path)); },
          [=] { return importBySqlite(path, {".mode tabs"}, output); }};
}

Tsides prepareSpreadsheet(const TbenchFolders& folders) {
  const auto path = makeSpreadsheet(folders, equipRecLimit);
  const auto lines = makeLines(folders, equipRecLimit);
  return {[=] { return importBare(optionsOfSpreadsheet(path)); }, [=] { return importBare(optionsOfLines(lines)); }};
}

Tsides prepareSpreadsheetEngine(const TbenchFolders& folders) {
  const auto path = makeSpreadsheet(folders, equipRecLimit);
  const auto output = folders.scratch / "sqlite.txt";
  return {[=] { return importBare(optionsOfSpreadsheet(path)); },
          [=] {
            return importBySqlite(path, {".mode csv", ".separator ;"}, output);
          }};
}

Tsides prepareSeen(const TbenchFolders& folders) {
  const auto path = makeLines(folders, almostFull);
  return {[=] { return importSeen(folders, path).milliseconds; },
          [=] { return importBare(optionsOfLines(path), almostFull); }};
}

Tsides prepareGap(const TbenchFolders& folders) {
  const auto path = makeLines(folders, almostFull);
  return {[=] { return importSeen(folders, path).longestGap; }, [] { return longestGap; }};
}

Tsides prepareLimit(const TbenchFolders& folders) {
  const auto full = makeLines(folders, equipRecLimit);
  const auto many = makeLines(folders, manyLines);
  return {[=] { return importBare(optionsOfLines(many)); }, [=] { return importBare(optionsOfLines(full)); }};
}

}  // namespace

std::vector<Trow> importRows(const TbenchFolders& folders) {
  return {{"import", "ms", 1.0 / 3, 15, [folders] { return prepareEngine(folders); }},
          {"import-spreadsheet", "ms", 1.0 / 3, 15, [folders] { return prepareSpreadsheetEngine(folders); }},
          {"import-spreadsheet-to-lines", "ms", 2.0, 15, [folders] { return prepareSpreadsheet(folders); }},
          {"import-dialogs", "ms", 3.0, 15, [folders] { return prepareSeen(folders); }},
          {"import-dialogs-gap", "ms", 1.0, 15, [folders] { return prepareGap(folders); }},
          {"import-million-lines", "ms", 1.5, 15, [folders] { return prepareLimit(folders); }}};
}
