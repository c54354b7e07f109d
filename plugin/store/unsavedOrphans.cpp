#include "store/unsavedOrphans.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <map>
#include <memory>
#include <utility>

#include "store/unsavedFormat.h"
#include "support/randomName.h"

namespace {

struct Tfound {
  TunsavedFile file;
  TunsavedShape shape = TunsavedShape::foreign;
  TunsavedContent content;
  std::size_t length = 0;  ///< of the file
};

class Tsearch {
 public:
  Tsearch(TfileSystem& files, std::string_view listName, const std::set<std::string>& own)
      : files_(files), listName_(listName), own_(own) {}

  /// Meanwhile other programs may adopt orphans, and end. Who holds the lock of a file knows for sure whether others
  /// have absorbed it only after reading theirs, so this goes on until no more files are found.
  void run(const std::vector<std::filesystem::path>& folders) {
    constexpr int mostPasses = 10;
    std::size_t before = 0;
    for (int pass = 0; pass == 0 || (pass < mostPasses && found_.size() > before); ++pass) {
      before = found_.size();
      absorbedByOthers_.clear();
      for (const std::filesystem::path& folder : folders) {
        for (const std::filesystem::path& path : unsavedFilesIn(files_, folder)) {
          if (!isFound(path)) look(path);
        }
      }
    }
  }

  TunsavedOrphans result(const TpairSums& current) {
    std::erase_if(found_, [&](const Tfound& found) { return absorbedByOthers_.contains(found.content.id); });
    for (Tfound& found : found_) {
      if (absorbed_.contains(found.content.id)) result_.spent.push_back(std::move(found.file));
    }
    for (Tfound& found : found_) {
      if (!absorbed_.contains(found.content.id)) sortOut(found, current);
    }
    return std::move(result_);
  }

 private:
  bool isFound(const std::filesystem::path& path) const {
    return std::any_of(found_.begin(), found_.end(), [&](const Tfound& found) { return found.file.path == path; });
  }

  void look(const std::filesystem::path& path) {
    using enum TlockResult::Tend;
    // The owner of a file that one of ours has absorbed has ended or is just ending.
    const bool isEnding = busy_.contains(path) && absorbed_.contains(busy_[path]);
    TlockResult locked = files_.lock(path, false, {}, std::chrono::milliseconds(isEnding ? 500 : 0));
    Tfound found;
    found.file.path = path;
    found.file.lock = std::move(locked.lock);
    if (locked.end == absent || !read(found)) return;
    if (locked.end != busy) {
      keep(std::move(found));
    } else if (isOfList(found)) {
      busy_[path] = found.content.id;
      absorbedByOthers_.insert(found.content.absorbed.begin(), found.content.absorbed.end());
    }
  }

  bool read(Tfound& found) {
    std::string bytes;
    const TstampResult looked = files_.stamp(found.file.path);
    if (!looked.isFound() || files_.read(found.file.path, bytes).end != TreadResult::Tend::done) return false;
    found.shape = readUnsaved(bytes, found.content);
    found.length = bytes.size();
    found.file.stamp = looked.stamp;
    found.file.id = found.content.id;
    return !own_.contains(found.content.id);
  }

  bool isOfList(const Tfound& found) const {
    return found.shape == TunsavedShape::whole && found.content.listName == listName_;
  }

  void keep(Tfound found) {
    std::unique_ptr<TfileWriter> writer;
    if (!files_.append(found.file.path, writer)) return;
    if (isOfList(found) && !isNew(found)) {
      absorbed_.insert(found.content.absorbed.begin(), found.content.absorbed.end());
      found_.push_back(std::move(found));
    } else if (isNew(found) && found.file.lock) {
      writer.reset();
      files_.remove(found.file.path);
    }
  }

  /// Whether the file has nothing behind its header yet. Its creator may be waiting for the lock, and must find it
  /// either unchanged or gone.
  bool isNew(const Tfound& found) const {
    const std::size_t headerLength = unsavedHeader(std::string(randomNameLength, '0'), listName_).size();
    return found.shape == TunsavedShape::torn ? found.length < headerLength
                                              : isOfList(found) && found.length == headerLength;
  }

  void sortOut(Tfound& found, const TpairSums& current) {
    TlistEdits edits = netEdits(found.content.editsNotIn(current));
    if (!edits.empty()) {
      result_.edits.push_back(std::move(edits));
      result_.files.push_back(std::move(found.file));
    } else if (found.file.lock) {  // without a lock, it may be a file that is just being created
      result_.spent.push_back(std::move(found.file));
    }
  }

  TfileSystem& files_;
  std::string_view listName_;
  const std::set<std::string>& own_;
  std::map<std::filesystem::path, std::string> busy_;  ///< ids of files that others hold
  std::set<std::string> absorbedByOthers_;
  std::set<std::string> absorbed_;  ///< by the files in `found_`
  std::vector<Tfound> found_;
  TunsavedOrphans result_;
};

}  // namespace

TunsavedOrphans findUnsavedOrphans(TfileSystem& files, const std::vector<std::filesystem::path>& folders,
                                   std::string_view listName, const TpairSums& current,
                                   const std::set<std::string>& own) {
  Tsearch search(files, listName, own);
  search.run(folders);
  return search.result(current);
}
