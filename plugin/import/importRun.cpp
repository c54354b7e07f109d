#include "import/importRun.h"

#include <algorithm>
#include <chrono>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "import/columnMapping.h"
#include "import/importFile.h"
#include "import/importLine.h"
#include "import/lineReader.h"

namespace {

using Tclock = std::chrono::steady_clock;

constexpr auto pollInterval = std::chrono::milliseconds(10);

class Timporter {
 public:
  Timporter(TimportFile& file, const TimportOptions& options, const TcolumnMapping& mapping, std::size_t columnCount,
            const TequipRecTable& table, TimportObserver& observer)
      : options_(options),
        mapping_(mapping),
        columnCount_(columnCount),
        observer_(observer),
        fileSize_(std::max<std::uint64_t>(file.size(), 1)),
        reader_(file.stream(), [this] { return goOn(); }),
        room_(equipRecLimit - std::min(table.count(), equipRecLimit)) {
    result_.records.reserve(room_);
    inUse_.reserve(equipRecLimit);
    for (TrecordIndex i = 0; i < table.count(); ++i) inUse_.insert(table.at(i).text(fieldControlNum));
  }

  TimportRun run() {
    skipToStartRow(reader_, options_.startRow);
    while (result_.records.size() < room_ && goOn()) {
      const auto line = reader_.next();
      if (!line) break;
      takeLine(*line);
    }
    if (reader_.failed()) result_.end = TimportRun::Tend::unreadable;
    if (stopped_) result_.end = TimportRun::Tend::cancelled;
    const bool done = result_.end == TimportRun::Tend::done;
    if (!done) result_.records.clear();
    result_.limitReached = done && result_.records.size() == room_;
    result_.malformed = findings_.malformed;
    result_.truncated = findings_.truncated;
    return std::move(result_);
  }

 private:
  bool goOn() {
    const auto now = Tclock::now();
    if (stopped_ || now - polled_ < pollInterval) return !stopped_;
    const std::uint64_t share = std::min(reader_.position(), fileSize_) * 100 / fileSize_;
    stopped_ = !observer_.goOn(static_cast<int>(share));
    polled_ = Tclock::now();
    return !stopped_;
  }

  void takeLine(std::string_view line) {
    ++result_.lines;
    fields_ = tokenise(line, options_.delimiter, options_.quotes, std::move(fields_));
    auto record = recordInLine(fields_, mapping_, columnCount_, findings_);
    if (!record) return;
    // Moving a record does not move its texts.
    const bool isNew = inUse_.insert(record->text(fieldControlNum)).second;
    if (isNew || rename(*record)) result_.records.push_back(std::move(*record));
  }

  /// Lets the observer rename a duplicate. False: the record must be skipped.
  bool rename(TequipRec& record) {
    ++result_.duplicates;
    std::string deviceId = record.text(fieldControlNum);
    const auto decision = observer_.duplicate(deviceId);
    polled_ = {};
    stopped_ = decision == TimportObserver::Tduplicate::stop;
    if (decision != TimportObserver::Tduplicate::renamed) return false;
    record.setText(fieldControlNum, deviceId);
    inUse_.insert(record.text(fieldControlNum));
    return true;
  }

  const TimportOptions& options_;
  const TcolumnMapping& mapping_;
  std::size_t columnCount_;
  TimportObserver& observer_;
  std::uint64_t fileSize_;
  TlineReader reader_;
  std::size_t room_;
  TimportRun result_;
  std::unordered_set<std::string_view> inUse_;  ///< texts of the table's records and of the new ones
  TfieldList fields_;
  TlineFindings findings_;
  Tclock::time_point polled_;
  bool stopped_ = false;
};

}  // namespace

TimportRun runImport(const TimportOptions& options, const TcolumnMapping& mapping, std::size_t columnCount,
                     const TequipRecTable& table, TimportObserver& observer) {
  TimportFile file(options);
  if (!file.isOpen()) return {TimportRun::Tend::unreadable, {}};
  return Timporter(file, options, mapping, columnCount, table, observer).run();
}
