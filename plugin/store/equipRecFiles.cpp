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
void keep(TfileSystem& files, const std::filesystem::path& path, const std::filesystem::path& kept) {
  std::string content;
  if (!files.stamp(path)) return;
  if (files.read(path, content) != TfileSystem::TreadResult::done || !writeFlushed(files, kept, path, content)) {
    throw TERException(EREXCEPTION, "The old files could not be kept");
  }
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
  table.removeAll();
  TsavedPair(files_, dataPath(), infoPath()).recover();
  known_ = stamps();  // before the files are read: a change meanwhile is then seen as one
  bool complete = false;
  const TERStatus status = TequipRecFromFile(&table, equipRecLimit, dataPath(), infoPath(), files_, &complete);
  allRead_ = complete && status == ERSUCCESS;
  return status;
}

TERStatus TequipRecFiles::saveFiles(const TequipRecTable& table) {
  const TERStatus status =
      TequipRecToFile(table, table.count(), dataPath(), infoPath(), files_, [this] { keepFilesIfUnread(); });
  if (status == ERSUCCESS) known_ = stamps();
  return status;
}

void TequipRecFiles::keepFilesIfUnread() {
  const Tstamps found = stamps();
  if (allRead_ && found == known_) return;
  int number = 1;
  while (files_.stamp(keptName(dataPath(), number)) || files_.stamp(keptName(infoPath(), number))) ++number;
  keep(files_, dataPath(), keptName(dataPath(), number));
  keep(files_, infoPath(), keptName(infoPath(), number));
  // A save that fails after this need not keep the same files once more.
  allRead_ = true;
  known_ = found;
}
