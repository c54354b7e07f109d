#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

#include "bench/rows.h"
#include "browser/csvExport.h"
#include "browser/recordList.h"
#include "browser/search.h"
#include "browser/settings.h"
#include "support/recordText.h"

namespace {

constexpr std::size_t manyRows = 9000;
constexpr std::size_t fewRows = 1000;
constexpr double growthBound = 1.5 * manyRows / fewRows;  // linear in the rows, with some margin
constexpr double mostForCommand = 50;                     // milliseconds

std::shared_ptr<TrecordList> fullList(const TbenchFolders& folders) {
  auto list = std::make_shared<TrecordList>();
  list->setRecords(fullTable(folders));
  loadTitles(folders, list->titles());
  list->clearSearch();
  return list;
}

/// Copies rows of a list that has room for exactly the larger number of copies.
double copyRows(const TbenchFolders& folders, std::size_t count) {
  const auto list = fullList(folders);
  list->remove({0, manyRows - 1});
  return millisecondsOf([&] { list->copy({0, count - 1}); });
}

/// Deletes rows from the middle of a full list.
double deleteRows(const TbenchFolders& folders, std::size_t count) {
  const auto list = fullList(folders);
  return millisecondsOf([&] { list->remove({100, 100 + count - 1}); });
}

/// Brings rows back that were deleted from the middle of a full list, and shows the list in its order again.
double undoDeletion(const TbenchFolders& folders, std::size_t count) {
  const auto list = fullList(folders);
  list->buildColumns(TbrowserSettings());
  TsortOrder byDescription{2, true};
  list->remove({100, 100 + count - 1});
  return millisecondsOf([&] { list->goStep(TstepWay::undo, byDescription); });
}

/// All searchable texts in lower case, one after the other: the best layout for scanning bytes.
std::string loweredTexts(const TrecordList& list) {
  std::string texts;
  for (TrecordIndex i = 0; i < list.records().count(); ++i) {
    const TequipRec& record = list.records().at(i);
    for (int field = 0; field < fieldCount; ++field) texts += lowerCased(record.text(field));
    texts += lowerCased(list.titles().title(record.testProc()));
  }
  return texts;
}

std::size_t occurrences(const std::string& texts, const std::string& needle) {
  std::size_t count = 0;
  const char* from = texts.data();
  const char* const end = from + texts.size();
  while (const void* found = memmem(from, static_cast<std::size_t>(end - from), needle.data(), needle.size())) {
    from = static_cast<const char*>(found) + 1;
    ++count;
  }
  return count;
}

Tsides prepareSearch(const TbenchFolders& folders, const std::string& needle, bool afterChange) {
  const auto list = fullList(folders);
  const auto texts = std::make_shared<std::string>(loweredTexts(*list));
  const auto found = std::make_shared<std::size_t>();
  const auto finder = std::make_shared<TrecordSearch>(std::as_const(*list).records(), std::as_const(*list).titles());
  const auto ours = [=] {
    if (afterChange) list->change(TlistChange(TreplaceRecord{0, list->records().at(0)}));
    return millisecondsOf([&] { *found = finder->find({"", "", "", needle}).size(); });
  };
  const auto scan = [=] { return millisecondsOf([&] { *found = occurrences(*texts, needle); }); };
  ours();
  const bool foundByUs = *found > 0;
  scan();
  require(foundByUs == (*found > 0), "the two sides find different records");
  return {ours, scan};
}

Tsides prepareExport(const TbenchFolders& folders) {
  const auto list = fullList(folders);
  const auto ours = folders.scratch / "ours.csv";
  const auto plain = folders.scratch / "plain.csv";
  require(exportRecords(list->view(), list->titles(), ours) == TexportResult::done, "the export failed");
  const auto bytes = std::make_shared<std::string>(contentOf(ours));
  const auto writeOnce = [=] {
    std::FILE* file = std::fopen(plain.c_str(), "w");
    require(file != nullptr, "the plain file cannot be opened");
    const bool written = std::fwrite(bytes->data(), 1, bytes->size(), file) == bytes->size();
    require(std::fclose(file) == 0 && written, "the plain file cannot be written");
  };
  return {[=] { return millisecondsOf([&] { exportRecords(list->view(), list->titles(), ours); }); },
          [=] { return millisecondsOf(writeOnce); }};
}

}  // namespace

std::vector<Trow> commandRows(const TbenchFolders& folders) {
  using Tmeasure = double (*)(const TbenchFolders&, std::size_t);
  const auto growth = [folders](Tmeasure measure) {
    return [=] {
      return Tsides{[=] { return measure(folders, manyRows); }, [=] { return measure(folders, fewRows); }};
    };
  };
  const auto limit = [folders](Tmeasure measure) {
    return [=] { return Tsides{[=] { return measure(folders, manyRows); }, [] { return mostForCommand; }}; };
  };
  const auto search = [folders](const char* needle, bool afterChange) {
    return [=] { return prepareSearch(folders, needle, afterChange); };
  };
  return {{"copy-9000", "ms", 1.0, 7, limit(copyRows)},
          {"copy-growth-1000-to-9000", "ms", growthBound, 7, growth(copyRows)},
          {"delete-9000", "ms", 1.0, 7, limit(deleteRows)},
          {"delete-growth-1000-to-9000", "ms", growthBound, 7, growth(deleteRows)},
          {"undo-9000", "ms", 1.0, 7, limit(undoDeletion)},
          {"undo-growth-1000-to-9000", "ms", growthBound, 7, growth(undoDeletion)},
          {"search-found", "ms", 3.0, 25, search("pump", false)},
          {"search-not-found", "ms", 3.0, 25, search("xylophone", false)},
          {"search-after-change", "ms", 15.0, 25, search("pump", true)},
          {"export", "ms", 10.0, 25, [folders] { return prepareExport(folders); }}};
}
