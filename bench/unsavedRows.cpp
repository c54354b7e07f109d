#include <fcntl.h>
#include <memory>
#include <string>
#include <unistd.h>
#include <utility>

#include "bench/rows.h"
#include "browser/recordList.h"
#include "store/equipRecFiles.h"
#include "store/joinLists.h"
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

/// A copy of the full list whose session was killed after `changes` changes.
void leaveUnsaved(const TbenchFolders& folders, const std::filesystem::path& folder, TrecordIndex changes) {
  std::filesystem::create_directories(folder / "DATA");
  std::filesystem::copy_file(folders.dataFile(), folder / "DATA/eq.dat");
  std::filesystem::copy_file(folders.infoFile(), folder / "DATA/eqinfo.dat");
  TequipRecFiles files({folder, {folder}});
  TequipRecTable table;
  require(!files.load(table), "the list was not loaded");
  TrecordCounts counts(table);
  TlistEdits all;
  for (TrecordIndex i = 0; i < changes; ++i) {
    TequipRec record = table.at(i);
    record.setText(fieldDescription, "Edited " + std::to_string(i));
    const TlistStep step = TreplaceRecord{i, std::move(record)};
    for (TlistEdit& edit : editsOf(step, table, counts)) all.push_back(std::move(edit));
    applyChange(table, TlistChange(step));
    if (all.size() < 10 && i + 1 < changes) continue;  // so that flushes do not take all the time
    files.unsaved().add(all);
    all.clear();
  }
}

/// Opens the list without a window, and restores what is unsaved, as a frame does.
struct TopenedList {
  explicit TopenedList(const std::filesystem::path& folder) : files({folder, {folder}}) {
    TequipRecTable table;
    loading = millisecondsOf([&] {
      require(!files.load(table), "the list was not loaded");
      unsaved = files.findUnsaved(table);
    });
    list.setRecords(std::move(table));
  }
  double restore() {
    return millisecondsOf([&] { list.restore(joinLists(list.records(), unsaved).change); });
  }

  TequipRecFiles files;
  TrecordList list;
  TlistEdits unsaved;
  double loading = 0;
};

std::filesystem::path killedSession(const TbenchFolders& folders) {
  constexpr TrecordIndex changes = 5000;
  auto folder = folders.scratch / "killed";
  if (std::filesystem::exists(folder)) return folder;
  leaveUnsaved(folders, folder, changes);
  require(TopenedList(folder).unsaved.size() == changes, "the unsaved changes were not found");
  return folder;
}

/// Compares opening a list with unsaved changes, asked about but not restored, with opening one without.
Tsides prepareOpening(const TbenchFolders& folders) {
  const auto folder = killedSession(folders);
  const auto plain = folders.scratch / "plain";
  std::filesystem::create_directories(plain);
  std::filesystem::copy(folder / "DATA", plain / "DATA", std::filesystem::copy_options::recursive);
  return {[=] { return TopenedList(folder).loading; }, [=] { return TopenedList(plain).loading; }};
}

Tsides prepareRestoring(const TbenchFolders& folders) {
  constexpr double limit = 200;  // milliseconds
  const auto folder = killedSession(folders);
  return {[=] { return TopenedList(folder).restore(); }, [] { return limit; }};
}

}  // namespace

std::vector<Trow> unsavedRows(const TbenchFolders& folders) {
  constexpr double bound = 2.0;
  constexpr int runs = 201;  // the cost of a flush varies
  return {{"unsaved-change-240", "ms", bound, runs, [folders] { return prepareChange(folders, 240); }},
          {"unsaved-change-18432", "ms", bound, runs, [folders] { return prepareChange(folders, equipRecLimit); }},
          {"open-with-5000-unsaved", "ms", bound, 15, [folders] { return prepareOpening(folders); }},
          {"restore-5000", "ms", 1.0, 15, [folders] { return prepareRestoring(folders); }}};
}
