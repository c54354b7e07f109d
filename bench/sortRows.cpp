#include <array>
#include <fstream>
#include <memory>

#include "bench/program.h"
#include "bench/rows.h"
#include "browser/columnLayout.h"
#include "browser/view.h"
#include "store/datastructs.h"
#include "testproc/autosequenceFileStructs.h"

namespace {

struct TsortColumn {
  const char* name;
  TcolumnId id;
};

constexpr std::array<TsortColumn, 10> sortColumns = {{{"number", columnNumber},
                                                      {"control-number", fieldControlNum},
                                                      {"description", fieldDescription},
                                                      {"manufacturer", fieldManufacturer},
                                                      {"model", fieldModel},
                                                      {"test-procedure", columnTestProc},
                                                      {"title", columnTitle},
                                                      {"custom-1", fieldCustom1},
                                                      {"custom-2", fieldCustom2},
                                                      {"custom-3", fieldCustom3}}};

/// The full list and a view to sort.
struct TsortedList {
  explicit TsortedList(const TbenchFolders& folders) : view(records, titles) {
    records = fullTable(folders);
    loadTitles(folders, titles);
    view.showAll();
  }
  TsortedList(const TsortedList&) = delete;
  TsortedList& operator=(const TsortedList&) = delete;

  TequipRecTable records;
  TtestProcTable titles;
  Tview view;
};

/// The sort keys of a column, one record per line, in the order of the view.
std::string linesOf(const TsortedList& list, TcolumnId column) {
  std::string lines;
  for (std::size_t position = 0; position < list.view.count(); ++position) {
    const TrecordIndex record = list.view.at(position);
    if (column < fieldCount) lines += list.records.at(record).text(column);
    if (column == columnNumber) lines += std::to_string(record + 1);
    if (column == columnTestProc) lines += std::to_string(list.records.at(record).testProc());
    if (column == columnTitle) lines += list.titles.title(list.records.at(record).testProc());
    lines += '\n';
  }
  return lines;
}

std::vector<std::string> sortCommand(TcolumnId column, bool ascending) {
  std::vector<std::string> command = {"sort", "-s"};
  if (column == columnNumber || column == columnTestProc) command.emplace_back("-n");
  if (!ascending) command.emplace_back("-r");
  return command;
}

double measureSort(TsortedList& list, TcolumnId column, bool ascending) {
  list.view.showAll();
  return millisecondsOf([&] { list.view.sort(column, ascending); });
}

/// The yardstick is the system's sort program, which reads the column's texts from a file, sorts and writes them. Both
/// sides must produce the same order.
Tsides prepareSort(const TbenchFolders& folders, TcolumnId column, bool ascending) {
  const auto list = std::make_shared<TsortedList>(folders);
  const auto input = folders.scratch / "unsorted";
  const auto output = folders.scratch / "sorted";
  std::ofstream(input, std::ios::binary) << linesOf(*list, column);
  const auto ours = [=] { return measureSort(*list, column, ascending); };
  const auto sortInto = [=](const std::filesystem::path& file) {
    return runProgram(sortCommand(column, ascending), input, file);
  };
  ours();
  sortInto(output);
  require(linesOf(*list, column) == contentOf(output), "the two sides sort in different orders");
  return {ours, [sortInto] { return sortInto("/dev/null"); }};
}

}  // namespace

std::vector<Trow> sortRows(const TbenchFolders& folders) {
  constexpr double bound = 0.333;
  constexpr int runs = 15;
  std::vector<Trow> rows;
  for (const auto& [name, id] : sortColumns) {
    for (const bool ascending : {true, false}) {
      const std::string suffix = ascending ? "" : "-reversed";
      const auto prepare = [folders, column = id, ascending] { return prepareSort(folders, column, ascending); };
      rows.push_back({std::string("sort-") + name + suffix, "ms", bound, runs, prepare});
    }
  }
  return rows;
}
