#include <algorithm>
#include <utility>

#include "store/recordEdits.h"
#include "store/recordHash.h"

namespace {

using Tplaces = std::vector<std::size_t>;

/// One content of records: how much more often the first list holds it than the list so far, and the net edits that
/// lead to it. The latest comes last, because an undo takes back the latest.
struct TcontentEdits {
  std::int64_t lost = 0;
  Tplaces present;      ///< those that became it
  Tplaces removedLast;  ///< removed ones that were it last; some may have been taken back
  Tplaces removedOnce;  ///< removed ones that were it in the first list; some may have been taken back
};

struct TnetEdit {
  TequipRec* was = nullptr;
  TequipRec* became = nullptr;
  TcontentEdits* first = nullptr;  ///< null if added
  TcontentEdits* last = nullptr;   ///< its content, or that before it was removed
  std::uint32_t alike = 0;
  std::uint32_t sameNumber = 0;
  std::uint32_t sameContent = 0;
  bool isVoid = false;  ///< added and removed, or again as it was

  bool isRemoved() const { return became == nullptr && !isVoid; }
};

class Tcomposer {
 public:
  explicit Tcomposer(std::size_t count) {
    edits_.reserve(count);
    contents_.reserve(2 * count);
  }

  /// `edit` must outlive the composer.
  void add(TlistEdit& edit) {
    if (edit.was == edit.became) return;
    TcontentEdits* before = edit.was ? &contents_[&*edit.was] : nullptr;
    TcontentEdits* after = edit.became ? &contents_[&*edit.became] : nullptr;
    TnetEdit& net = edits_[before != nullptr ? changed(edit, *before) : added(*after)];
    net.became = edit.became ? &*edit.became : nullptr;
    net.last = after != nullptr ? after : before;
    net.alike = after != nullptr ? countAtFirst(edit.alike, *after) : 0;
    net.isVoid = net.first == after;
    file(net);
    if (before != nullptr) ++before->lost;
    if (after != nullptr) --after->lost;
  }

  /// The net edits, with the records of the edits that were added.
  TlistEdits take() {
    TlistEdits edits;
    for (const TnetEdit& net : edits_) {
      if (net.isVoid) continue;
      TlistEdit& edit = edits.emplace_back();
      if (net.was != nullptr) edit.was = std::move(*net.was);
      if (net.became != nullptr) edit.became = std::move(*net.became);
      edit.alike = net.alike;
      edit.sameNumber = net.sameNumber;
      edit.sameContent = net.sameContent;
    }
    return edits;
  }

 private:
  static std::uint32_t countAtFirst(std::uint32_t count, const TcontentEdits& content) {
    return static_cast<std::uint32_t>(std::max<std::int64_t>(0, count + content.lost));
  }

  /// The net edit that goes on with a change or removal.
  std::size_t changed(TlistEdit& edit, TcontentEdits& before) {
    if (!before.present.empty()) {
      const std::size_t place = before.present.back();
      before.present.pop_back();
      return place;
    }
    TnetEdit& net = edits_.emplace_back();
    net.was = &*edit.was;
    net.first = &before;
    net.sameNumber = edit.sameNumber;
    net.sameContent = countAtFirst(edit.sameContent, before);
    return edits_.size() - 1;
  }

  /// The net edit that goes on with an addition.
  std::size_t added(TcontentEdits& after) {
    for (Tplaces* removed : {&after.removedLast, &after.removedOnce}) {
      while (!removed->empty()) {
        const std::size_t place = removed->back();
        removed->pop_back();
        const TnetEdit& net = edits_[place];
        if (net.isRemoved() && (net.last == &after || net.first == &after)) return place;
      }
    }
    edits_.emplace_back();
    return edits_.size() - 1;
  }

  void file(const TnetEdit& net) {
    const auto place = static_cast<std::size_t>(&net - edits_.data());
    if (net.isVoid) return;
    if (net.became != nullptr) {
      net.last->present.push_back(place);
    } else {
      net.last->removedLast.push_back(place);
      net.first->removedOnce.push_back(place);
    }
  }

  std::vector<TnetEdit> edits_;
  std::unordered_map<const TequipRec*, TcontentEdits, TrecordHash, TrecordsEqual> contents_;
};

}  // namespace

TlistEdits netEdits(TlistEdits edits) {
  Tcomposer composer(edits.size());
  for (TlistEdit& edit : edits) composer.add(edit);
  return composer.take();
}
