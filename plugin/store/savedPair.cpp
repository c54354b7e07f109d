#include "store/savedPair.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>
#include <vector>

#include "store/erException.h"
#include "support/log.h"
#include "support/paths.h"

namespace {

constexpr std::chrono::seconds longestWait(5);
constexpr std::uint64_t longestMarker = 4096;

TsavedPair::Tfile withTemporary(const std::filesystem::path& target) {
  return {target, ownNameBeside(target), target, {}};
}

}  // namespace

TsavedPair::TsavedPair(TfileSystem& files, const std::filesystem::path& dataPath, const std::filesystem::path& infoPath)
    : files_(files),
      data_(withTemporary(files.resolve(dataPath))),
      info_(withTemporary(files.resolve(infoPath))),
      marker_(withTemporary(dataPath.parent_path() / "eq.commit")) {}

Toutcome TsavedPair::lock() {
  const auto path = marker_.target.parent_path() / "eq.lock";
  TlockResult result = files_.lock(path, true, data_.target, longestWait);
  if (result.end == TlockResult::Tend::busy) {
    return Tfailure{"lock", pathText(path), "another program or window is loading or saving"};
  }
  lock_ = std::move(result.lock);
  if (!lock_) logInfo("The record files are used without a lock");
  return {};
}

TsavedPair::Trecovery TsavedPair::recover() {
  TcommitMarker marker;
  const Tmarker found = readMarker(marker);
  if (found == Tmarker::unknown) return Trecovery::unknown;
  if (found == Tmarker::whole) {
    Tfile data{data_.target, data_.target.parent_path() / marker.dataTemporary, {}, {}};
    Tfile info{info_.target, info_.target.parent_path() / marker.infoTemporary, {}, {}};
    const Tplace dataPlace = placeOf(data, marker.sums.data);
    const Tplace infoPlace = placeOf(info, marker.sums.info);
    if (dataPlace == Tplace::unknown || infoPlace == Tplace::unknown) return Trecovery::unknown;
    if (dataPlace != Tplace::nowhere && infoPlace != Tplace::nowhere) {
      if (dataPlace == Tplace::temporary) data_.current = data.temporary;
      if (infoPlace == Tplace::temporary) info_.current = info.temporary;
      // This process may see a marker that is not on the disk yet. It must be there before the files' new names are.
      const bool finished =
          files_.flushFolder(marker_.target.parent_path()) && finish(data_) && finish(info_) && flushFolders();
      if (!finished) return Trecovery::waiting;
    }
  }
  withdraw();
  return Trecovery::done;
}

void TsavedPair::noteWritten() {
  for (Tfile* file : {&data_, &info_}) file->written = files_.stamp(file->temporary).stamp;
}

void TsavedPair::commit(const TpairSums& sums) {
  const TcommitMarker marker{pathText(data_.temporary.filename()), pathText(info_.temporary.filename()), sums};
  if (const Toutcome decided = decide(marker); !decided) {
    withdraw();
    throw TERException(EREXCEPTION, "The commit marker could not be written", decided.failure().text());
  }
  // What was just written need not be read again, unless another process has recovered this save meanwhile.
  if (const Toutcome renamed = putInPlace(data_); !renamed) {
    const Tanswer inPlace = holds(data_.target, sums.data);
    if (inPlace == Tanswer::other) withdraw();
    if (inPlace != Tanswer::same) {
      throw TERException(EREXCEPTION, "The new eq file could not be put into place", renamed.failure().text());
    }
  }
  Toutcome last = putInPlace(info_);
  if (last || holds(info_.target, sums.info) == Tanswer::same) last = flushFolders();
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
  switch (files_.read(marker_.target, text, longestMarker).end) {
    case TreadResult::Tend::missing:
    case TreadResult::Tend::tooLarge:
      return Tmarker::none;
    case TreadResult::Tend::done:
      break;
    case TreadResult::Tend::notOpened:
      // A folder or a pipe is no marker, whoever put it there.
      return files_.stamp(marker_.target).end == TstampResult::Tend::notAFile ? Tmarker::none : Tmarker::unknown;
    default:
      return Tmarker::unknown;
  }
  const auto found = TcommitMarker::fromText(text);
  const bool ofThisPair = found && isTemporaryOf(found->dataTemporary, pathText(data_.target.filename())) &&
                          isTemporaryOf(found->infoTemporary, pathText(info_.target.filename()));
  if (ofThisPair) marker = *found;
  return ofThisPair ? Tmarker::whole : Tmarker::none;
}

Tanswer TsavedPair::holds(const std::filesystem::path& path, const TfileSum& sum) {
  std::string content;
  switch (files_.read(path, content, recordFileLimit).end) {
    case TreadResult::Tend::done:
      return sumOf(content) == sum ? Tanswer::same : Tanswer::other;
    case TreadResult::Tend::missing:
    case TreadResult::Tend::tooLarge:
      return Tanswer::other;
    case TreadResult::Tend::notOpened:
      return files_.stamp(path).end == TstampResult::Tend::notAFile ? Tanswer::other : Tanswer::unknown;
    default:
      return Tanswer::unknown;
  }
}

/// Where a decided save has this file. It is in place already if another process has recovered the save, or an earlier
/// recovery was interrupted.
TsavedPair::Tplace TsavedPair::placeOf(const Tfile& file, const TfileSum& sum) {
  const Tanswer waiting = holds(file.temporary, sum);
  if (waiting == Tanswer::same) return Tplace::temporary;
  const Tanswer inPlace = holds(file.target, sum);
  if (inPlace == Tanswer::same) return Tplace::target;
  const bool unknown = waiting == Tanswer::unknown || inPlace == Tanswer::unknown;
  return unknown ? Tplace::unknown : Tplace::nowhere;
}

/// Puts the content that was found into the file's place.
bool TsavedPair::finish(Tfile& file) {
  if (file.current == file.target) return true;
  if (!files_.rename(file.current, file.target)) return false;
  file.current = file.target;
  return true;
}

Toutcome TsavedPair::putInPlace(const Tfile& file) {
  const bool isOwn = lock_ || files_.stamp(file.temporary).stamp == file.written;
  if (!isOwn) return Tfailure{"rename", pathText(file.temporary), "another program has changed the file"};
  return files_.rename(file.temporary, file.target);
}

/// Brings the names of both temporaries to the disk, then the marker.
Toutcome TsavedPair::decide(const TcommitMarker& marker) {
  Toutcome outcome = writeFlushed(files_, marker_.temporary, data_.target, marker.toText());
  marker_.written = files_.stamp(marker_.temporary).stamp;
  if (outcome) outcome = flushFolders();
  if (outcome) outcome = putInPlace(marker_);
  return outcome ? files_.flushFolder(marker_.target.parent_path()) : outcome;
}

/// Removes the marker and, once it is surely gone, everything else that a save leaves behind.
void TsavedPair::withdraw() {
  using enum TstampResult::Tend;
  const TstampResult::Tend looked = files_.stamp(marker_.target).end;
  const bool mayBeThere = looked != absent && looked != notAFile;
  if (mayBeThere && !(files_.remove(marker_.target) && files_.flushFolder(marker_.target.parent_path()))) return;
  if (lock_) {
    removeRemains();
  } else {
    files_.remove(marker_.temporary);
    discard();
  }
}

/// Removes the temporaries of this writer and of any that died. Nobody else can have some while this one has the lock.
void TsavedPair::removeRemains() {
  for (const auto& folder : folders()) {
    std::vector<std::filesystem::path> names;
    if (!files_.list(folder, names)) continue;
    for (const auto& name : names) {
      const bool remains = std::ranges::any_of(std::array{&data_, &info_, &marker_}, [&](const Tfile* file) {
        return file->target.parent_path() == folder && isTemporaryOf(pathText(name), pathText(file->target.filename()));
      });
      if (remains) files_.remove(folder / name);
    }
  }
}

Toutcome TsavedPair::flushFolders() {
  for (const auto& folder : folders()) {
    if (Toutcome flushed = files_.flushFolder(folder); !flushed) return flushed;
  }
  return {};
}

std::set<std::filesystem::path> TsavedPair::folders() const {
  return {marker_.target.parent_path(), data_.target.parent_path(), info_.target.parent_path()};
}
