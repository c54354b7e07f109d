#include <fcntl.h>
#include <memory>
#include <string>
#include <unistd.h>
#include <utility>

#include "bench/rows.h"
#include "store/listChange.h"
#include "store/recordEdits.h"
#include "store/unsavedChanges.h"
#include "support/fileSystem.h"

namespace {

/// The first records of the full list, with the file of their unsaved changes.
struct TeditedList {
  TeditedList(const TbenchFolders& folders, std::size_t count)
      : folder(folders.scratch / ("unsaved-" + std::to_string(count))), changes({folder}, diskFileSystem()) {
    const TequipRecTable all = fullTable(folders);
    std::vector<TequipRec> records;
    for (TrecordIndex i = 0; i < count; ++i) records.push_back(all.at(i));
    table = TequipRecTable(std::move(records));
    counts = TrecordCounts(table);
    changes.begin("list");
  }

  std::filesystem::path folder;
  TequipRecTable table;
  TrecordCounts counts;
  TunsavedChanges changes;
  TrecordIndex next = 0;
};

/// Edits the next record, as a command does.
void changeRecord(TeditedList& list) {
  TequipRec record = list.table.at(list.next);
  record.setText(fieldDescription, "Edited " + std::to_string(list.next));
  const TlistStep step = TreplaceRecord{list.next, std::move(record)};
  const TlistEdits edits = editsOf(step, list.table, list.counts);
  applyChange(list.table, TlistChange(step));
  list.changes.add(edits);
  list.next = (list.next + 1) % static_cast<TrecordIndex>(list.table.count());
}

/// A file open for appending, until the end of the program.
int openPlainly(const std::filesystem::path& path) {
  const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0666);
  require(descriptor >= 0, path.string() + " cannot be opened");
  return descriptor;
}

void appendPlainly(int descriptor, const std::string& bytes) {
  const bool isWritten = ::write(descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  require(isWritten && ::fsync(descriptor) == 0, "the plain file cannot be written");
}

/// Compares a change of a record, up to its flushed entry, with appending as many bytes to a plain file and flushing
/// it.
Tsides prepareChange(const TbenchFolders& folders, std::size_t count) {
  const auto list = std::make_shared<TeditedList>(folders, count);
  changeRecord(*list);
  const auto length = std::filesystem::file_size(list->changes.path());
  changeRecord(*list);
  const std::string entry = contentOf(list->changes.path()).substr(length);
  require(!entry.empty() && list->changes.isSafe(), "the change was not written");
  const int plain = openPlainly(list->folder / "plain");
  return {[list] { return millisecondsOf([&] { changeRecord(*list); }); },
          [=] { return millisecondsOf([&] { appendPlainly(plain, entry); }); }};
}

}  // namespace

std::vector<Trow> unsavedRows(const TbenchFolders& folders) {
  constexpr double bound = 2.0;
  constexpr int runs = 201;  // the cost of a flush varies
  return {{"unsaved-change-240", "ms", bound, runs, [folders] { return prepareChange(folders, 240); }},
          {"unsaved-change-18432", "ms", bound, runs, [folders] { return prepareChange(folders, equipRecLimit); }}};
}
