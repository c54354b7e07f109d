#include "import/importRun.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <utility>

#include "import/columnMapping.h"
#include "import/importFile.h"
#include "import/importLine.h"
#include "import/knownDevices.h"
#include "import/rowReader.h"

namespace {

using Tclock = std::chrono::steady_clock;

constexpr auto pollInterval = std::chrono::milliseconds(10);
constexpr unsigned callsPerLook = 16;

/// Takes over what a row has for a record, except for the Device ID, by which it was found.
void update(TequipRec& record, const TimportedRow& row) {
  for (int field = fieldControlNum + 1; field < fieldCount; ++field) {
    if (row.isGiven.at(static_cast<std::size_t>(field))) record.setText(field, row.record.text(field));
  }
  if (row.isGiven[importTestProc]) record.setTestProc(row.record.testProc());
}

/// The result of a run that has nothing to add.
TimportRun ended(TimportRun::Tend end, std::size_t rows = 0) {
  TimportRun run;
  run.end = end;
  run.rows = rows;
  return run;
}

class Timporter {
 public:
  Timporter(TimportFile& file, const TimportOptions& options, const TcolumnMapping& mapping, std::size_t columnCount,
            const TequipRecTable& table, TimportObserver& observer)
      : options_(options),
        mapping_(mapping),
        columnCount_(columnCount),
        table_(table),
        observer_(observer),
        fileSize_(std::max<std::uint64_t>(file.size(), 1)),
        reader_(file.stream(), options, [this] { return goOn(); }),
        room_(equipRecLimit - std::min(table.count(), equipRecLimit)),
        known_(table) {
    result_.records.reserve(room_);
  }

  TimportRun run() {
    skipToStartRow(reader_, options_.startRow);
    while ((hasRoom() || options_.known == TknownChoice::update) && goOn() && reader_.next(row_)) takeRow();
    if (!hasRoom() && goOn()) noteWhatIsBeyond();
    if (reader_.failed()) result_.end = TimportRun::Tend::unreadable;
    if (stopped_) result_.end = TimportRun::Tend::cancelled;
    if (result_.end != TimportRun::Tend::done) return ended(result_.end, result_.rows);
    for (auto& [index, record] : updated_) result_.updates.push_back({index, std::move(record)});
    // A table that was full before has been told to be full by whoever filled it.
    const bool isFilled = options_.known != TknownChoice::update || room_ > 0 || isBeyond_;
    result_.limitReached = !hasRoom() && isFilled;
    return std::move(result_);
  }

 private:
  bool goOn() {
    // Asking the time costs as much as a short row.
    const bool isAsked = polled_ == Tclock::time_point() || ++calls_ % callsPerLook == 0;
    if (stopped_ || !isAsked) return !stopped_;
    const auto now = Tclock::now();
    if (now - polled_ < pollInterval) return true;
    const std::uint64_t share = std::min(reader_.position(), fileSize_) * 100 / fileSize_;
    stopped_ = !observer_.goOn(static_cast<int>(share));
    polled_ = Tclock::now();
    return !stopped_;
  }

  bool hasRoom() const { return result_.records.size() < room_; }

  void takeRow() {
    ++result_.rows;
    made_ = recordInRow(row_, mapping_, columnCount_, std::move(made_));
    if (!made_.hasDeviceId()) {
      result_.withoutDeviceId += made_.findings.empty() ? 0 : 1;
      return note();
    }
    result_.malformed = result_.malformed || made_.has(TremarkKind::otherFieldCount) ||
                        made_.has(TremarkKind::procedureUnreadable) || made_.has(TremarkKind::cutAtZero);
    result_.truncated = result_.truncated || made_.has(TremarkKind::deviceIdCut);
    const TknownDevices::Tdevice* known = addNew();
    if (known == nullptr) return;
    ++result_.duplicates;
    switch (options_.known) {
      case TknownChoice::ask:
        return rename() ? addRenamed() : skip(TremarkKind::knownSkipped);
      case TknownChoice::skip:
        return skip(TremarkKind::knownSkipped);
      case TknownChoice::update:
        return known->isSeveral ? skip(TremarkKind::knownSeveral) : update(*known);
    }
  }

  TrecordIndex nextIndex() const { return static_cast<TrecordIndex>(result_.records.size()); }

  /// Adds the record if its Device ID is not known; otherwise returns what is known.
  const TknownDevices::Tdevice* addNew() {
    if (!hasRoom()) {
      const TknownDevices::Tdevice* known = known_.find(made_.record.text(fieldControlNum));
      if (known == nullptr) skip(TremarkKind::beyondLimit);
      isBeyond_ = isBeyond_ || known == nullptr;
      return known;
    }
    const auto [known, isAdded] = known_.add(made_.record, nextIndex());
    if (!isAdded) return known;
    take();
    return nullptr;
  }

  void addRenamed() {
    known_.add(made_.record, nextIndex());
    take();
  }

  void take() {
    noteTaken();
    result_.records.push_back(std::move(made_.record));
  }

  void update(const TknownDevices::Tdevice& known) {
    ++result_.updated;
    noteTaken();
    TequipRec& record = known.isNew ? result_.records[known.index]
                                    : updated_.try_emplace(known.index, table_.at(known.index)).first->second;
    ::update(record, made_);
  }

  void skip(TremarkKind why) {
    if (stopped_) return;
    ++result_.skipped;
    made_.findings = {{why, importFieldCount, {}, {}}};
    note();
  }

  /// Lets the observer rename a duplicate. False: the record must be skipped.
  bool rename() {
    std::string deviceId = made_.record.text(fieldControlNum);
    const auto decision = observer_.duplicate(deviceId);
    polled_ = {};
    stopped_ = decision == TimportObserver::Tduplicate::stop;
    if (decision != TimportObserver::Tduplicate::renamed) return false;
    made_.record.setText(fieldControlNum, deviceId);
    return true;
  }

  void noteTaken() {
    result_.withRemarks += made_.findings.empty() ? 0 : 1;
    note();
  }

  void note() {
    for (TimportFinding& finding : made_.findings) {
      result_.report.add({reader_.number(), made_.record.text(fieldControlNum), std::move(finding)});
    }
  }

  /// One remark stands for all further rows: they are not read.
  void noteWhatIsBeyond() {
    while (reader_.next(row_)) {
      made_ = recordInRow(row_, mapping_, columnCount_, std::move(made_));
      if (!made_.hasDeviceId()) continue;
      made_.findings = {{TremarkKind::beyondLimit, importFieldCount, {}, {}}};
      return note();
    }
  }

  const TimportOptions& options_;
  const TcolumnMapping& mapping_;
  std::size_t columnCount_;
  const TequipRecTable& table_;
  TimportObserver& observer_;
  std::uint64_t fileSize_;
  TrowReader reader_;
  std::size_t room_;
  TimportRun result_;
  TknownDevices known_;
  std::map<TrecordIndex, TequipRec> updated_;  ///< records of the table
  TimportRow row_;
  TimportedRow made_;
  Tclock::time_point polled_;
  unsigned calls_ = 0;
  bool isBeyond_ = false;
  bool stopped_ = false;
};

}  // namespace

TimportRun runImport(const TimportOptions& options, const TcolumnMapping& mapping, std::size_t columnCount,
                     const TequipRecTable& table, TimportObserver& observer) {
  TimportFile file(options);
  if (!file.isOpen()) return ended(TimportRun::Tend::unreadable);
  return Timporter(file, options, mapping, columnCount, table, observer).run();
}

TlistChange changeOf(TimportRun& run, const TequipRecTable& table) {
  TlistChange change;
  if (!run.records.empty()) change = TlistChange::append(table.count(), std::move(run.records));
  for (TreplaceRecord& update : run.updates) {
    if (!(update.record == table.at(update.index))) change.add(std::move(update));
  }
  return change;
}
