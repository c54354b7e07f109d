#include "store/equipRecFiles.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "store/joinLists.h"
#include "store/keptCopies.h"
#include "store/loadReport.h"
#include "store/recordLoad.h"
#include "store/recordSave.h"
#include "store/savedPair.h"
#include "support/log.h"
#include "support/paths.h"
#include "support/uninterrupted.h"

namespace {

/// Logs how a load or a save ended and how long it took.
class Treport {
 public:
  explicit Treport(const char* work) : work_(work) {}

  void log(bool succeeded, const std::string& end, std::size_t count, const std::string& reason) const {
    const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start_);
    const std::string line = work_ + ' ' + std::to_string(count) + " records: " + end + ", " +
                             std::to_string(time.count()) + " ms" + (reason.empty() ? "" : "; " + reason);
    succeeded ? logInfo(line) : logFailure(line);
  }

 private:
  std::string work_;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// Runs a load or a save and logs how it ended. Returns the message to show, if any.
template <typename Work, typename MessageOf>
std::optional<TmessageText> report(const char* name, const TequipRecTable& table, Work work,
                                   MessageOf messageOf) noexcept {
  const Treport report(name);
  try {
    const TERResult result = work();
    report.log(result.status == ERSUCCESS, "status " + std::to_string(result.status), table.count(), result.reason);
    return messageOf(result.status);
  } catch (const TERException& exception) {
    report.log(false, "exception " + std::to_string(exception.code()) + ", " + exception.what(), table.count(),
               exception.reason());
    return exceptionMessage(exception.code());
  } catch (...) {
    logCaught(name);
    return messageOf(EREXCEPTION);
  }
}

/// The name by which the file of unsaved changes knows a list: the data file's path, through links where possible.
std::string listNameOf(const std::filesystem::path& dataPath) {
  std::error_code error;
  auto name = uninterrupted(error, [&](std::error_code& e) { return std::filesystem::weakly_canonical(dataPath, e); });
  if (error) name = std::filesystem::absolute(dataPath, error);
  return pathText(error ? dataPath : name);
}

bool isUnchanged(const TstampResult& found, const TstampResult& known) {
  if (found.isAbsent() || known.isAbsent()) return found.isAbsent() && known.isAbsent();
  return found.isFound() && known.isFound() && found.stamp == known.stamp;
}

bool isUnknown(const TstampResult& found) {
  return !found.isFound() && !found.isAbsent();
}

}  // namespace

TequipRecFiles::TequipRecFiles(TlistPlaces places, TfileSystem& files)
    : places_(std::move(places)), files_(files), unsaved_(places_.unsavedFolders, files) {}

std::optional<TmessageText> TequipRecFiles::load(TequipRecTable& table) noexcept {
  return report(
      "Load of", table, [&] { return loadFiles(table); }, loadMessage);
}

TsaveReport TequipRecFiles::save(const TequipRecTable& table) noexcept {
  TsaveReport saved;
  const auto message = report(
      "Save of", table, [&] { return saveFiles(table, saved); }, saveMessage);
  if (message) return {false, message, failedSaveDetails(), std::nullopt};
  saved.succeeded = true;
  return saved;
}

TlistEdits TequipRecFiles::findUnsaved(const TequipRecTable& loaded) noexcept {
  try {
    if (unread_ && !known_.areAbsent()) return {};
    TlistEdits edits = joinAll(loaded, unsaved_.findOrphans(knownSums_));
    if (edits.empty()) unsaved_.adopt({});
    return edits;
  } catch (...) {
    logCaught("findUnsaved");
    return {};
  }
}

std::filesystem::path TequipRecFiles::dataPath() const {
  return findPath(places_.workingFolder, "DATA/eq.dat");
}

std::filesystem::path TequipRecFiles::infoPath() const {
  return findPath(places_.workingFolder, "DATA/eqinfo.dat");
}

TequipRecFiles::Tstamps TequipRecFiles::stamps() const {
  return {files_.stamp(dataPath()), files_.stamp(infoPath())};
}

TERResult TequipRecFiles::loadFiles(TequipRecTable& table) {
  unread_ = true;
  allRead_ = false;
  known_ = {};
  knownSums_ = {};
  table = TequipRecTable();
  unsaved_.begin(listNameOf(dataPath()));
  TsavedPair pair(files_, dataPath(), infoPath());
  known_ = stamps();
  if (const Toutcome locked = pair.lock(); !locked) return {ER1STFILENOTFOUND, locked.failure().text()};
  recoverToLoad(pair);
  known_ = stamps();  // before the files are read, so that a change meanwhile counts as one
  TERResult result = loadPair(table, equipRecLimit, pair, files_, knownSums_);
  writtenSums_ = knownSums_;
  unread_ = result.status == ER1STFILENOTFOUND || result.status == ER2NDFILENOTFOUND;
  allRead_ = result.complete && result.status == ERSUCCESS;
  return result;
}

TERResult TequipRecFiles::saveFiles(const TequipRecTable& table, TsaveReport& outcome) {
  // After a load that failed, it must be enough to put a missing file back.
  if (unread_ && unsaved_.net().empty() && !stamps().areAbsent()) return {};
  TsavedPair pair(files_, dataPath(), infoPath());
  if (TERResult prepared = prepareSave(pair); prepared.status != ERSUCCESS) return prepared;
  const Tstamps found = stamps();
  const Tmeanwhile change = meanwhile(found, pair);
  if (change == Tmeanwhile::unknown) {
    throw TERException(EREXCEPTION, "It cannot be told whether another program has changed the record files");
  }
  const bool holdsOthersWork = change == Tmeanwhile::changed || (unread_ && !found.areAbsent());
  if (holdsOthersWork && unsaved_.net().empty()) return {};
  if (change == Tmeanwhile::removed) outcome.message = filesRemoved;
  if (change == Tmeanwhile::changed) outcome.message = listsJoined;
  if (holdsOthersWork) return saveJoined(table, pair, outcome);
  if (!allRead_ || change != Tmeanwhile::nothing) {
    const std::string kept = keepCopies(files_, dataPath(), infoPath());
    if (outcome.message && !kept.empty()) outcome.details = "What was left of them is kept as " + kept + '.';
    // If the save fails later, the next one need not keep the same files again.
    known_ = found;
    allRead_ = true;
  }
  return write(table, pair);
}

/// Saves to files that hold records which this window has not read.
TERResult TequipRecFiles::saveJoined(const TequipRecTable& table, TsavedPair& pair, TsaveReport& outcome) {
  const std::string kept = keepCopies(files_, dataPath(), infoPath());
  TequipRecTable list;
  const TERResult loaded = loadTheirs(list, pair);
  // Where this window has read nothing, even a list with errors is more than its own.
  const bool hasRecords = unread_ && (loaded.status == ERSUCCESS || loaded.status == ERINVALIDRECORDS);
  const bool readable = hasRecords || (loaded.status == ERSUCCESS && loaded.complete);
  std::size_t fieldsInBoth = 0;
  if (readable) {
    Tjoined joined = joinLists(list, unsaved_.net());
    fieldsInBoth = joined.fieldsInBoth;
    applyChange(list, std::move(joined.change));
  }
  const bool isJoined = readable && list.count() <= equipRecLimit;
  if (outcome.message) {
    if (!isJoined) outcome.message = listsNotJoined;
    outcome.details = isJoined ? joinDetails(fieldsInBoth, kept) : notJoinedDetails(readable, kept);
  }
  logInfo(isJoined ? "Joined with the list of another program" : "Not joined with the list of another program");
  if (!isJoined) return write(table, pair);
  TERResult result = write(list, pair);
  outcome.joined = std::move(list);
  return result;
}

/// Loads what another program has saved, which has just been copied. Throws if it cannot be read now: that passes, and
/// is no reason to write over it.
TERResult TequipRecFiles::loadTheirs(TequipRecTable& list, TsavedPair& pair) const {
  const Tstamps found = stamps();
  if (std::max(found.data.stamp.length, found.info.stamp.length) > recordFileLimit) return {EREXCEPTION, {}, false};
  TpairSums sums;
  TERResult loaded = loadPair(list, equipRecLimit, pair, files_, sums);
  const bool isUnread = (loaded.status == ER1STFILENOTFOUND && !found.data.isAbsent()) ||
                        (loaded.status == ER2NDFILENOTFOUND && !found.info.isAbsent());
  if (isUnread) throw TERException(EREXCEPTION, "The other program's files cannot be read", loaded.reason);
  return loaded;
}

/// What becomes of the changes that a failed save has not saved.
std::string TequipRecFiles::failedSaveDetails() noexcept {
  try {
    if (unsaved_.net().empty()) return {};
    return unsaved_.isSafe() ? changesOffered : changesNotSafe;
  } catch (...) {
    logCaught("failedSaveDetails");
    return {};
  }
}

TERResult TequipRecFiles::write(const TequipRecTable& table, TsavedPair& pair) {
  TERResult result = savePair(table, table.count(), pair, files_, [&](const TpairSums& sums) {
    backUp(files_, dataPath(), infoPath(), sums, todaysDate());
    writtenSums_ = sums;
    unsaved_.saving(sums);
  });
  if (result.status != ERSUCCESS) return result;
  unsaved_.saved();
  known_ = stamps();
  knownSums_ = writtenSums_;
  unread_ = false;
  allRead_ = true;
  return result;
}

TequipRecFiles::Tmeanwhile TequipRecFiles::meanwhile(const Tstamps& found, TsavedPair& pair) const {
  if (isUnchanged(found.data, known_.data) && isUnchanged(found.info, known_.info)) return Tmeanwhile::nothing;
  if (isUnknown(found.data) || isUnknown(found.info)) return Tmeanwhile::unknown;
  bool unknown = false;
  if (areHeld(knownSums_, pair, unknown) || areHeld(writtenSums_, pair, unknown)) return Tmeanwhile::nothing;
  if (unknown) return Tmeanwhile::unknown;
  const bool removed =
      (known_.data.isFound() && found.data.isAbsent()) || (known_.info.isFound() && found.info.isAbsent());
  return removed ? Tmeanwhile::removed : Tmeanwhile::changed;
}

/// Whether the files have these fingerprints. Sets `unknown` if that cannot be told.
bool TequipRecFiles::areHeld(const TpairSums& sums, TsavedPair& pair, bool& unknown) const {
  const Tanswer data = pair.holds(pair.data().target, sums.data);
  const Tanswer info = data == Tanswer::other ? data : pair.holds(pair.info().target, sums.info);
  unknown = unknown || data == Tanswer::unknown || info == Tanswer::unknown;
  return data == Tanswer::same && info == Tanswer::same;
}
