#include <memory>
#include <utility>

#include "bench/rows.h"
#include "store/joinLists.h"

namespace {

constexpr std::size_t fewToJoin = 2000;
constexpr std::size_t mostChanges = 5000;  // in the full list; in a shorter one in proportion
constexpr double joinGrowthBound = 1.5 * equipRecLimit / fewToJoin;
constexpr double mostForJoining = 200;  // milliseconds

/// Two lists that were one, and what we did to ours.
struct Tparted {
  TequipRecTable theirs;
  TlistEdits ours;
};

TequipRecTable firstRecords(const TequipRecTable& full, std::size_t count) {
  std::vector<TequipRec> records;
  for (TrecordIndex index = 0; index < count; ++index) records.push_back(full.at(index));
  return TequipRecTable(std::move(records));
}

TlistStep replaced(const TequipRecTable& table, TrecordIndex index, int field, std::string_view text) {
  TequipRec record = table.at(index);
  record.setText(field, text);
  return TreplaceRecord{index, std::move(record)};
}

/// They change every second record. We change some of all, and of each four edits one removes and one adds a record.
Tparted part(const TequipRecTable& base) {
  Tparted parted{base, {}};
  for (TrecordIndex index = 0; index < base.count(); index += 2) {
    applyChange(parted.theirs, TlistChange(replaced(base, index, fieldModel, "theirs")));
  }
  TequipRecTable ours = base;
  TrecordCounts counts(ours);
  const std::size_t changes = mostChanges * base.count() / equipRecLimit;
  for (std::size_t i = 0; i < changes; ++i) {
    const auto index = static_cast<TrecordIndex>(i * 3);
    TlistStep step = replaced(ours, index, fieldCustom1, "ours");
    if (i % 4 == 1) step = TremoveRecords{{index}};
    if (i % 4 == 3) step = TinsertRecords{{index}, {std::get<TreplaceRecord>(step).record}};
    for (TlistEdit& edit : editsOf(step, ours, counts)) parted.ours.push_back(std::move(edit));
    applyChange(ours, TlistChange(std::move(step)));
  }
  require(parted.ours.size() == changes, "not every step changed a record");
  return parted;
}

double join(const Tparted& parted) {
  Tparted copy = parted;
  return millisecondsOf([&] {
    Tjoined joined = joinLists(copy.theirs, netEdits(std::move(copy.ours)));
    applyChange(copy.theirs, std::move(joined.change));
  });
}

std::function<double()> joining(const TequipRecTable& full, std::size_t count) {
  const auto parted = std::make_shared<Tparted>(part(firstRecords(full, count)));
  return [parted] { return join(*parted); };
}

}  // namespace

std::vector<Trow> joinRows(const TbenchFolders& folders) {
  const auto limit = [folders] {
    return Tsides{joining(fullTable(folders), equipRecLimit), [] { return mostForJoining; }};
  };
  const auto growth = [folders] {
    const TequipRecTable full = fullTable(folders);
    return Tsides{joining(full, equipRecLimit), joining(full, fewToJoin)};
  };
  return {{"join-18432", "ms", 1.0, 15, limit}, {"join-growth-2000-to-18432", "ms", joinGrowthBound, 15, growth}};
}
