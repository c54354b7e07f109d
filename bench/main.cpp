// Measures the editor against yardsticks. Usage: eqrec-bench DATAFOLDER SCRATCHFOLDER [ROW]; bench/run starts it.
#include <QApplication>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "bench/rows.h"
#include "support/messageBox.h"

namespace {

constexpr int beyondBound = 1;
constexpr int wrongArguments = 2;

std::vector<Trow> allRows(const TbenchFolders& folders) {
  std::vector<Trow> rows;
  for (const auto rowsOf : {loadRows, sortRows, saveRows, unsavedRows, firstPaintRows, pageRows, commandRows, joinRows,
                            importRows, bigFileRows, printRows, uploadRows}) {
    for (Trow& row : rowsOf(folders)) rows.push_back(std::move(row));
  }
  return rows;
}

/// A message box means that the measured work failed, and nobody is there to close it.
void failOnMessageBox() {
  replaceMessageBox([](QWidget*, const TmessageText& message, auto, auto) -> QMessageBox::StandardButton {
    std::printf("A message box appeared: %s\n", message.text);
    std::fflush(stdout);
    std::_Exit(beyondBound);
  });
}

int tellNames(const std::vector<Trow>& rows) {
  std::fprintf(stderr, "There is no such row. The rows are:\n");
  for (const Trow& row : rows) std::fprintf(stderr, "  %s\n", row.name.c_str());
  return wrongArguments;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");  // keeps the measurements independent of a real screen
  const QApplication application(argc, argv);
  if (argc != 3 && argc != 4) {
    std::fprintf(stderr, "Usage: eqrec-bench DATAFOLDER SCRATCHFOLDER [ROW]\n");
    return wrongArguments;
  }
  const TbenchFolders folders{argv[1], argv[2]};
  std::vector<Trow> rows = allRows(folders);
  if (argc == 4) std::erase_if(rows, [&](const Trow& row) { return row.name != argv[3]; });
  if (rows.empty()) return tellNames(allRows(folders));

  failOnMessageBox();
  std::filesystem::remove_all(folders.scratch);
  std::filesystem::create_directories(folders.scratch);
  const bool within = measureRows(rows);
  std::filesystem::remove_all(folders.scratch);
  return within ? 0 : beyondBound;
}
