#include "store/savedPair.h"

#include "store/erException.h"
#include "support/fileSystem.h"
#include "support/safeWrite.h"

namespace {

TsavedPair::Tfile withTemporary(const std::filesystem::path& target) {
  TsavedPair::Tfile file{target, target};
  file.temporary += ".new";
  return file;
}

}  // namespace

TsavedPair::TsavedPair(TfileSystem& files, const std::filesystem::path& dataPath, const std::filesystem::path& infoPath)
    : files_(files),
      data_(withTemporary(files.resolve(dataPath))),
      info_(withTemporary(files.resolve(infoPath))),
      marker_(withTemporary(dataPath.parent_path() / "eq.commit")) {}

bool TsavedPair::recover() {
  TcommitMarker marker;
  const Tmarker found = readMarker(marker);
  pending_ = found == Tmarker::unreadable;
  if (pending_) return false;
  if (found == Tmarker::whole && isAnywhere(data_, marker.data) && isAnywhere(info_, marker.info)) {
    // The marker may be there for this process and not yet on the disk: it must outlast the files' new names.
    pending_ = !files_.flushFolder(marker_.target.parent_path()) || !putInPlace(data_, marker.data) ||
               !putInPlace(info_, marker.info) || !flushFolders();
    if (pending_) return false;
  }
  withdraw();
  return true;
}

std::filesystem::path TsavedPair::current(const Tfile& file) const {
  return pending_ && files_.stamp(file.temporary) ? file.temporary : file.target;
}

void TsavedPair::commit(const TfileSum& data, const TfileSum& info) {
  const TcommitMarker marker{data_.target.filename().string(), data, info_.target.filename().string(), info};
  if (!decide(marker)) {
    withdraw();
    throw TERException(EREXCEPTION, "The commit marker could not be written");
  }
  // What was just written need not be read again, unless another process has recovered this save meanwhile.
  if (!files_.rename(data_.temporary, data_.target) && !holds(data_.target, data)) {
    withdraw();
    throw TERException(EREXCEPTION, "The new eq file could not be put into place");
  }
  const bool renamed = files_.rename(info_.temporary, info_.target) || holds(info_.target, info);
  if (!renamed || !flushFolders()) {
    throw TERException(EREXCEPTION, "The new eq info file could not be put into place yet");
  }
  withdraw();
}

void TsavedPair::discard() {
  files_.remove(data_.temporary);
  files_.remove(info_.temporary);
}

TsavedPair::Tmarker TsavedPair::readMarker(TcommitMarker& marker) {
  std::string text;
  switch (files_.read(marker_.target, text)) {
    case TfileSystem::TreadResult::notOpened:
      return files_.stamp(marker_.target) ? Tmarker::unreadable : Tmarker::none;
    case TfileSystem::TreadResult::done:
      break;
    default:
      return Tmarker::unreadable;
  }
  const auto found = TcommitMarker::fromText(text);
  const bool ofThisPair = found && found->dataName == data_.target.filename().string() &&
                          found->infoName == info_.target.filename().string();
  if (ofThisPair) marker = *found;
  return ofThisPair ? Tmarker::whole : Tmarker::none;
}

bool TsavedPair::holds(const std::filesystem::path& path, const TfileSum& sum) {
  std::string content;
  return files_.read(path, content) == TfileSystem::TreadResult::done && sumOf(content) == sum;
}

bool TsavedPair::isAnywhere(const Tfile& file, const TfileSum& sum) {
  return holds(file.temporary, sum) || holds(file.target, sum);
}

bool TsavedPair::putInPlace(const Tfile& file, const TfileSum& sum) {
  // It is in place already where another process has recovered this save, or an earlier recovery was interrupted. A
  // temporary of other content is then the beginning of a later save.
  const bool inPlace = !holds(file.temporary, sum) && holds(file.target, sum);
  return inPlace || files_.rename(file.temporary, file.target);
}

/// Brings the marker, and before it the names of both temporaries, to the disk.
bool TsavedPair::decide(const TcommitMarker& marker) {
  return writeFlushed(files_, marker_.temporary, data_.target, marker.toText()) && flushFolders() &&
         files_.rename(marker_.temporary, marker_.target) && files_.flushFolder(marker_.target.parent_path());
}

/// Removes the marker, and once it is surely gone everything else that a save leaves behind.
void TsavedPair::withdraw() {
  const auto folder = marker_.target.parent_path();
  const bool hadMarker = files_.stamp(marker_.target).has_value();
  if (hadMarker && !(files_.remove(marker_.target) && files_.flushFolder(folder))) return;
  files_.remove(marker_.temporary);
  discard();
}

bool TsavedPair::flushFolders() {
  const auto markerFolder = marker_.target.parent_path();
  const auto dataFolder = data_.target.parent_path();
  const auto infoFolder = info_.target.parent_path();
  return files_.flushFolder(markerFolder) && (dataFolder == markerFolder || files_.flushFolder(dataFolder)) &&
         (infoFolder == markerFolder || infoFolder == dataFolder || files_.flushFolder(infoFolder));
}
