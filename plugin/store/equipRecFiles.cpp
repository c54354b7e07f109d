#include "store/equipRecFiles.h"

#include <chrono>
#include <string>
#include <utility>

#include "store/datastructs.h"
#include "store/loadReport.h"
#include "store/recordLoad.h"
#include "store/recordSave.h"
#include "store/savedPair.h"
#include "support/fileSystem.h"
#include "support/log.h"
#include "support/paths.h"

namespace {

std::filesystem::path keptName(const std::filesystem::path& path, int number) {
  std::filesystem::path kept = path;
  kept += ".kept-" + std::to_string(number);
  return kept;
}

/// What renaming keeps of a file's stamp.
std::optional<TfileStamp> stampOf(TfileSystem& files, const std::filesystem::path& path) {
  TstampResult result = files.stamp(path);
  result.stamp.changed = 0;
  return result.isFound() ? std::optional(result.stamp) : std::nullopt;
}

/// Copies a file, if it exists, to a name that is not taken.
Toutcome keep(TfileSystem& files, const std::filesystem::path& path, const std::filesystem::path& kept) {
  if (files.stamp(path).isAbsent()) return {};
  std::string content;
  const TreadResult read = files.read(path, content);
  if (read.end == TreadResult::Tend::done) return writeFlushed(files, kept, path, content);
  return read.failure.value_or(Tfailure{"keep", pathText(path), "the file has vanished"});
}

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

}  // namespace

TequipRecFiles::TequipRecFiles(std::filesystem::path workingFolder, TfileSystem& files)
    : workingFolder_(std::move(workingFolder)), files_(files) {}

std::optional<TmessageText> TequipRecFiles::load(TequipRecTable& table) noexcept {
  return report(
      "Load of", table, [&] { return loadFiles(table); }, loadMessage);
}

std::optional<TmessageText> TequipRecFiles::save(const TequipRecTable& table) noexcept {
  return report(
      "Save of", table, [&] { return saveFiles(table); }, saveMessage);
}

std::filesystem::path TequipRecFiles::dataPath() const {
  return findPath(workingFolder_, "DATA/eq.dat");
}

std::filesystem::path TequipRecFiles::infoPath() const {
  return findPath(workingFolder_, "DATA/eqinfo.dat");
}

TequipRecFiles::Tstamps TequipRecFiles::stamps() const {
  return {stampOf(files_, dataPath()), stampOf(files_, infoPath())};
}

TERResult TequipRecFiles::loadFiles(TequipRecTable& table) {
  allRead_ = false;
  table = TequipRecTable();
  TsavedPair pair(files_, dataPath(), infoPath());
  pair.recover();
  known_ = stamps();  // before the files are read, so that a change meanwhile counts as one
  TERResult result = loadPair(table, equipRecLimit, pair, files_);
  allRead_ = result.complete && result.status == ERSUCCESS;
  return result;
}

TERResult TequipRecFiles::saveFiles(const TequipRecTable& table) {
  return TequipRecToFile(table, table.count(), dataPath(), infoPath(), files_, [this] {
    keepFilesIfUnread();
    // Renaming keeps a file's stamp, so these files are known as ours once they are in place.
    const TsavedPair pair(files_, dataPath(), infoPath());
    written_ = {stampOf(files_, pair.data().temporary), stampOf(files_, pair.info().temporary)};
  });
}

void TequipRecFiles::keepFilesIfUnread() {
  const Tstamps found = stamps();
  const bool known = (found.data == known_.data || found.data == written_.data) &&
                     (found.info == known_.info || found.info == written_.info);
  if (allRead_ && known) return;
  int number = 1;
  while (files_.stamp(keptName(dataPath(), number)).isFound() || files_.stamp(keptName(infoPath(), number)).isFound()) {
    ++number;
  }
  const auto keptData = keptName(dataPath(), number);
  const auto keptInfo = keptName(infoPath(), number);
  Toutcome kept = keep(files_, dataPath(), keptData);
  if (kept) kept = keep(files_, infoPath(), keptInfo);
  if (!kept) {
    files_.remove(keptData);
    files_.remove(keptInfo);
    throw TERException(EREXCEPTION, "The old files could not be kept", kept.failure().text());
  }
  logInfo("Kept the files that were not read as .kept-" + std::to_string(number));
  // If the save fails later, the next one need not keep the same files again.
  allRead_ = true;
  known_ = found;
}
