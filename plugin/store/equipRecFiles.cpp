#include "store/equipRecFiles.h"

#include <string>
#include <utility>

#include "store/datastructs.h"
#include "store/loadReport.h"
#include "store/recordLoad.h"
#include "store/recordSave.h"
#include "store/savedPair.h"
#include "support/paths.h"
#include "support/safeWrite.h"

namespace {

std::filesystem::path keptName(const std::filesystem::path& path, int number) {
  std::filesystem::path kept = path;
  kept += ".kept-" + std::to_string(number);
  return kept;
}

/// Copies a file, if it is there, to a name that is not taken.
bool keep(TfileSystem& files, const std::filesystem::path& path, const std::filesystem::path& kept) {
  std::string content;
  return !files.stamp(path) ||
         (files.read(path, content) == TfileSystem::TreadResult::done && writeFlushed(files, kept, path, content));
}

/// Runs a load or a save, and turns however it ended into its message.
template <typename Work, typename MessageOf>
std::optional<TmessageText> report(Work work, MessageOf messageOf) noexcept {
  try {
    return messageOf(work());
  } catch (const TERException& exception) {
    return exceptionMessage(exception.code());
  } catch (...) {
    return messageOf(EREXCEPTION);
  }
}

}  // namespace

TequipRecFiles::TequipRecFiles(std::filesystem::path workingFolder, TfileSystem& files)
    : workingFolder_(std::move(workingFolder)), files_(files) {}

std::optional<TmessageText> TequipRecFiles::load(TequipRecTable& table) noexcept {
  return report([&] { return loadFiles(table); }, loadMessage);
}

std::optional<TmessageText> TequipRecFiles::save(const TequipRecTable& table) noexcept {
  return report([&] { return saveFiles(table); }, saveMessage);
}

std::filesystem::path TequipRecFiles::dataPath() const {
  return findPath(workingFolder_, "DATA/eq.dat");
}

std::filesystem::path TequipRecFiles::infoPath() const {
  return findPath(workingFolder_, "DATA/eqinfo.dat");
}

TequipRecFiles::Tstamps TequipRecFiles::stamps() const {
  return {files_.stamp(dataPath()), files_.stamp(infoPath())};
}

TERStatus TequipRecFiles::loadFiles(TequipRecTable& table) {
  allRead_ = false;
  table = TequipRecTable();
  TsavedPair(files_, dataPath(), infoPath()).recover();
  known_ = stamps();  // before the files are read: a change meanwhile is then seen as one
  bool complete = false;
  const TERStatus status = TequipRecFromFile(&table, equipRecLimit, dataPath(), infoPath(), files_, &complete);
  allRead_ = complete && status == ERSUCCESS;
  return status;
}

TERStatus TequipRecFiles::saveFiles(const TequipRecTable& table) {
  return TequipRecToFile(table, table.count(), dataPath(), infoPath(), files_, [this] {
    keepFilesIfUnread();
    // Renaming keeps a file's stamp: what is found in these places later is ours, whenever it gets there.
    const TsavedPair pair(files_, dataPath(), infoPath());
    written_ = {files_.stamp(pair.data().temporary), files_.stamp(pair.info().temporary)};
  });
}

void TequipRecFiles::keepFilesIfUnread() {
  const Tstamps found = stamps();
  const bool known = (found.data == known_.data || found.data == written_.data) &&
                     (found.info == known_.info || found.info == written_.info);
  if (allRead_ && known) return;
  int number = 1;
  while (files_.stamp(keptName(dataPath(), number)) || files_.stamp(keptName(infoPath(), number))) ++number;
  const auto keptData = keptName(dataPath(), number);
  const auto keptInfo = keptName(infoPath(), number);
  if (!keep(files_, dataPath(), keptData) || !keep(files_, infoPath(), keptInfo)) {
    files_.remove(keptData);
    files_.remove(keptInfo);
    throw TERException(EREXCEPTION, "The old files could not be kept");
  }
  // A save that fails after this need not keep the same files once more.
  allRead_ = true;
  known_ = found;
}
