#include "store/unsavedOrphans.h"

#include <chrono>
#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>

#include "store/unsavedFormat.h"

namespace {

struct Tfound {
  TunsavedFile file;
  TunsavedShape shape = TunsavedShape::foreign;
  TunsavedContent content;
  std::size_t length = 0;  ///< of the file
};

void appendMoved(std::vector<TunsavedFile>& to, std::vector<TunsavedFile>& from) {
  to.insert(to.end(), std::move_iterator(from.begin()), std::move_iterator(from.end()));
  from.clear();
}

class Tsearch {
 public:
  Tsearch(TfileSystem& files, std::string_view listName, const std::set<std::string>& own)
      : files_(files), listName_(listName), leftAlone_(own) {}

  void look(const std::filesystem::path& path) {
    using enum TlockResult::Tend;
    TlockResult locked = files_.lock(path, false, {}, std::chrono::milliseconds(0));
    Tfound found;
    found.file.path = path;
    found.file.lock = std::move(locked.lock);
    if (locked.end == absent || !read(found)) return;
    if (locked.end != busy) {
      keep(std::move(found));
    } else if (isOfList(found)) {
      // An owner that is just ending may already have released a file that this one has absorbed.
      leftAlone_.insert(found.content.absorbed.begin(), found.content.absorbed.end());
    }
  }

  TunsavedOrphans result(const TpairSums& current) {
    std::set<std::string> absorbed;
    std::erase_if(found_, [&](const Tfound& found) { return leftAlone_.contains(found.file.id); });
    for (const Tfound& found : found_) absorbed.insert(found.content.absorbed.begin(), found.content.absorbed.end());
    for (Tfound& found : found_) {
      if (absorbed.contains(found.file.id)) result_.spent.push_back(std::move(found.file));
    }
    for (Tfound& found : found_) {
      if (!absorbed.contains(found.content.id)) sortOut(found, current);
    }
    result_.edits = netEdits(std::move(result_.edits));
    if (result_.edits.empty()) appendMoved(result_.spent, result_.files);
    return std::move(result_);
  }

 private:
  bool read(Tfound& found) {
    std::string bytes;
    const TstampResult looked = files_.stamp(found.file.path);
    if (!looked.isFound() || files_.read(found.file.path, bytes).end != TreadResult::Tend::done) return false;
    found.shape = readUnsaved(bytes, found.content);
    found.length = bytes.size();
    found.file.stamp = looked.stamp;
    found.file.id = found.content.id;
    return true;
  }

  bool isOfList(const Tfound& found) const {
    return found.shape == TunsavedShape::whole && found.content.listName == listName_;
  }

  void keep(Tfound found) {
    std::unique_ptr<TfileWriter> writer;
    if (!files_.append(found.file.path, writer)) return;
    const std::size_t headerLength = unsavedHeader(newUnsavedId(), listName_).size();
    if (isOfList(found)) {
      found_.push_back(std::move(found));
    } else if (found.shape == TunsavedShape::torn && found.length < headerLength && found.file.lock) {
      writer.reset();
      files_.remove(found.file.path);
    }
  }

  void sortOut(Tfound& found, const TpairSums& current) {
    TlistEdits edits = found.content.editsNotIn(current);
    if (!netEdits(edits).empty()) {
      result_.edits.insert(result_.edits.end(), std::move_iterator(edits.begin()), std::move_iterator(edits.end()));
      result_.files.push_back(std::move(found.file));
    } else if (found.file.lock) {  // without a lock, it may be a file that is just being created
      result_.spent.push_back(std::move(found.file));
    }
  }

  TfileSystem& files_;
  std::string_view listName_;
  std::set<std::string> leftAlone_;
  std::vector<Tfound> found_;
  TunsavedOrphans result_;
};

}  // namespace

TunsavedOrphans findUnsavedOrphans(TfileSystem& files, const std::vector<std::filesystem::path>& folders,
                                   std::string_view listName, const TpairSums& current,
                                   const std::set<std::string>& own) {
  Tsearch search(files, listName, own);
  for (const std::filesystem::path& folder : folders) {
    for (const std::filesystem::path& path : unsavedFilesIn(files, folder)) search.look(path);
  }
  return search.result(current);
}
