#include "store/savedPair.h"

#include <set>

#include "store/erException.h"
#include "support/fileSystem.h"

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
    // This process may see a marker that is not on the disk yet. It must be there before the files' new names are.
    pending_ = !files_.flushFolder(marker_.target.parent_path()) || !putInPlace(data_, marker.data) ||
               !putInPlace(info_, marker.info) || !flushFolders();
    if (pending_) return false;
  }
  withdraw();
  return true;
}

std::filesystem::path TsavedPair::current(const Tfile& file) const {
  return pending_ && !files_.stamp(file.temporary).isAbsent() ? file.temporary : file.target;
}

void TsavedPair::commit(const TpairSums& sums) {
  const TcommitMarker marker{data_.target.filename().string(), sums.data, info_.target.filename().string(), sums.info};
  if (const Toutcome decided = decide(marker); !decided) {
    withdraw();
    throw TERException(EREXCEPTION, "The commit marker could not be written", decided.failure().text());
  }
  // What was just written need not be read again, unless another process has recovered this save meanwhile.
  const Toutcome dataRenamed = files_.rename(data_.temporary, data_.target);
  if (!dataRenamed && !holds(data_.target, sums.data)) {
    withdraw();
    throw TERException(EREXCEPTION, "The new eq file could not be put into place", dataRenamed.failure().text());
  }
  Toutcome last = files_.rename(info_.temporary, info_.target);
  if (last || holds(info_.target, sums.info)) last = flushFolders();
  if (!last) {
    throw TERException(EREXCEPTION, "The new eq info file could not be put into place yet", last.failure().text());
  }
  withdraw();
}

void TsavedPair::discard() {
  files_.remove(data_.temporary);
  files_.remove(info_.temporary);
}

TsavedPair::Tmarker TsavedPair::readMarker(TcommitMarker& marker) {
  std::string text;
  switch (files_.read(marker_.target, text).end) {
    case TreadResult::Tend::missing:
      return Tmarker::none;
    case TreadResult::Tend::notOpened:
      return files_.stamp(marker_.target).isAbsent() ? Tmarker::none : Tmarker::unreadable;
    case TreadResult::Tend::done:
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
  return files_.read(path, content).end == TreadResult::Tend::done && sumOf(content) == sum;
}

bool TsavedPair::isAnywhere(const Tfile& file, const TfileSum& sum) {
  return holds(file.temporary, sum) || holds(file.target, sum);
}

bool TsavedPair::putInPlace(const Tfile& file, const TfileSum& sum) {
  // It is in place already if another process has recovered this save, or an earlier recovery was interrupted. A
  // temporary with other content then belongs to a later save.
  const bool inPlace = !holds(file.temporary, sum) && holds(file.target, sum);
  return inPlace || bool{files_.rename(file.temporary, file.target)};
}

/// Brings the names of both temporaries to the disk, then the marker.
Toutcome TsavedPair::decide(const TcommitMarker& marker) {
  files_.remove(marker_.temporary);
  Toutcome outcome = writeFlushed(files_, marker_.temporary, data_.target, marker.toText());
  if (outcome) outcome = flushFolders();
  if (outcome) outcome = files_.rename(marker_.temporary, marker_.target);
  return outcome ? files_.flushFolder(marker_.target.parent_path()) : outcome;
}

/// Removes the marker and, once it is surely gone, everything else that a save leaves behind.
void TsavedPair::withdraw() {
  const auto folder = marker_.target.parent_path();
  const bool hadMarker = !files_.stamp(marker_.target).isAbsent();
  if (hadMarker && !(files_.remove(marker_.target) && files_.flushFolder(folder))) return;
  files_.remove(marker_.temporary);
  discard();
}

Toutcome TsavedPair::flushFolders() {
  const std::set folders = {marker_.target.parent_path(), data_.target.parent_path(), info_.target.parent_path()};
  for (const std::filesystem::path& folder : folders) {
    if (Toutcome flushed = files_.flushFolder(folder); !flushed) return flushed;
  }
  return {};
}
