#include "store/unsavedChanges.h"

#include <iterator>
#include <set>
#include <utility>

#include "store/unsavedFormat.h"
#include "store/unsavedOrphans.h"
#include "support/log.h"

namespace {

/// Does what may run out of memory.
template <typename Twork>
void guarded(Twork work) noexcept {
  try {
    work();
  } catch (...) {
    logCaught("unsaved changes");
  }
}

std::vector<std::string> idsOf(const std::vector<TunsavedFile>& files) {
  std::vector<std::string> ids;
  ids.reserve(files.size());
  for (const TunsavedFile& file : files) ids.push_back(file.id);
  return ids;
}

}  // namespace

TunsavedChanges::TunsavedChanges(std::vector<std::filesystem::path> folders, TfileSystem& files)
    : folders_(std::move(folders)), files_(files) {}

TunsavedChanges::~TunsavedChanges() = default;

void TunsavedChanges::begin(std::string listName) {
  listName_ = std::move(listName);
  entries_.clear();
  own_ = {};
  spent_.clear();
  orphans_.clear();
  isWritten_ = true;
  isFailureTold_ = false;
}

void TunsavedChanges::add(const TlistEdits& edits) noexcept {
  if (edits.empty()) return;
  guarded([&] { write(editsEntry(edits)); });
}

TlistEdits TunsavedChanges::net() const {
  return netEdits(editsIn(entries_));
}

bool TunsavedChanges::isSafe() noexcept {
  guarded([&] {
    if (entries_.empty()) return;
    isWritten_ = isWritten_ && !isGone(files_, own_);
    if (!isWritten_) writeAnew();
  });
  return isWritten_;
}

void TunsavedChanges::saving(const TpairSums& sums) noexcept {
  if (entries_.empty()) return;
  guarded([&] { write(savingEntry(sums)); });
}

void TunsavedChanges::saved() noexcept {
  guarded([&] {
    entries_.clear();
    isWritten_ = true;
    isFailureTold_ = false;
    // Our own file comes last: as long as it is there, the others count as absorbed.
    if (!own_.path.empty()) spent_.push_back(std::exchange(own_, {}));
    if (!removeInOrder(files_, spent_)) voidSpent();
  });
}

std::vector<TlistEdits> TunsavedChanges::findOrphans(const TpairSums& current) noexcept {
  std::vector<TlistEdits> edits;
  guarded([&] {
    orphans_.clear();
    const std::vector<std::string> spent = idsOf(spent_);
    std::set<std::string> own(spent.begin(), spent.end());
    if (!own_.path.empty()) own.insert(own_.id);
    TunsavedOrphans found = findUnsavedOrphans(files_, folders_, listName_, current, own);
    orphans_ = std::move(found.files);
    moveToSpent(found.spent);
    // A file that an orphan has absorbed stays for now: the orphan's copy may not be on the disk yet.
    if (orphans_.empty()) removeInOrder(files_, spent_);
    edits = std::move(found.edits);
  });
  return edits;
}

void TunsavedChanges::adopt(const TlistEdits& edits) noexcept {
  guarded([&] {
    moveToSpent(orphans_);
    if (edits.empty()) {
      removeInOrder(files_, spent_);
      return;
    }
    entries_ += editsEntry(edits);
    writeAnew();
  });
}

void TunsavedChanges::setAside() noexcept {
  guarded([&] {
    removeInOrder(files_, spent_);
    for (TunsavedFile& orphan : std::exchange(orphans_, {})) ::setAside(files_, std::move(orphan));
  });
}

void TunsavedChanges::write(const std::string& entry) {
  entries_ += entry;
  isWritten_ = isWritten_ && append(entry);
  if (!isWritten_) writeAnew();
}

bool TunsavedChanges::append(std::string_view entry) {
  return !own_.path.empty() && !isGone(files_, own_) && appendFlushed(own_, entry);
}

void TunsavedChanges::writeAnew() {
  isWritten_ = false;
  // Its end may be torn, and entries behind a torn end are not read.
  if (!own_.path.empty() && !isGone(files_, own_)) spent_.push_back(std::move(own_));
  own_ = {};
  for (const std::filesystem::path& folder : folders_) {
    auto file = createUnsavedFile(files_, folder, listName_);
    if (!file) continue;
    isWritten_ = appendFlushed(*file, restartEntry(idsOf(spent_), entries_));
    if (isWritten_) {
      own_ = std::move(*file);
      isFailureTold_ = false;
      removeInOrder(files_, spent_);
      return;
    }
    std::vector<TunsavedFile> failed;
    failed.push_back(std::move(*file));
    if (!removeInOrder(files_, failed)) moveToSpent(failed);
  }
  if (!std::exchange(isFailureTold_, true)) logFailure("The unsaved changes are in memory only");
}

/// Marks the changes of files that could not be removed as saved.
void TunsavedChanges::voidSpent() {
  TunsavedFile last = std::move(spent_.back());
  spent_.pop_back();
  if (!last.writer) files_.append(last.path, last.writer);
  appendFlushed(last, restartEntry(idsOf(spent_), {}));
  spent_.push_back(std::move(last));
}

void TunsavedChanges::moveToSpent(std::vector<TunsavedFile>& files) {
  spent_.insert(spent_.end(), std::move_iterator(files.begin()), std::move_iterator(files.end()));
  files.clear();
}
