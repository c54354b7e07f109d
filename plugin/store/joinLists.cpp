#include "store/joinLists.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "store/recordHash.h"

namespace {

/// A content of records that our edits concern. The base is the list that both started from.
struct Tcontent {
  std::int64_t base = 0;
  std::int64_t theirs = 0;  ///< more in their list than in the base, less those that are accounted for
  std::int64_t ours = 0;    ///< more in our list than in the base
  std::vector<TrecordIndex> unclaimed;
};

/// The unclaimed records of their list with one control number.
struct Tnumber {
  std::size_t count = 0;
  TrecordIndex last = 0;
};

class Tjoiner {
 public:
  Tjoiner(const TequipRecTable& theirs, const TlistEdits& ours)
      : theirs_(theirs), ours_(ours), isClaimed_(theirs.count()), isSettled_(ours.size()) {
    contents_.reserve(2 * ours.size());
    for (const TlistEdit& edit : ours) countOurs(edit);
    for (auto& [record, content] : contents_) content.theirs = -content.base;
    for (auto index = static_cast<TrecordIndex>(theirs.count()); index-- > 0;) countTheirs(index);
  }

  Tjoined join() {
    if (isMadeAlready()) return {};
    for (std::size_t i = 0; i < ours_.size(); ++i) isSettled_[i] = ours_[i].was && settleChange(ours_[i]);
    for (std::size_t i = 0; i < ours_.size(); ++i) isSettled_[i] = isSettled_[i] || settleAsTheirs(ours_[i]);
    countNumbers();
    for (std::size_t i = 0; i < ours_.size(); ++i) {
      if (!isSettled_[i] && !joinByNumber(ours_[i])) added_.push_back(*ours_[i].became);
    }
    addSteps();
    return std::move(joined_);
  }

 private:
  void countOurs(const TlistEdit& edit) {
    if (edit.was) {
      Tcontent& content = contents_[&*edit.was];
      content.base = std::int64_t{edit.sameContent} + 1;
      --content.ours;
    }
    if (edit.became) {
      Tcontent& content = contents_[&*edit.became];
      content.base = edit.alike;
      ++content.ours;
    }
  }

  void countTheirs(TrecordIndex index) {
    const auto found = contents_.find(&theirs_.at(index));
    if (found == contents_.end()) return;
    ++found->second.theirs;
    found->second.unclaimed.push_back(index);
  }

  bool isMadeAlready() const {
    const auto isMade = [](const auto& entry) { return entry.second.theirs == entry.second.ours; };
    const auto isChange = [](const auto& entry) { return entry.second.ours != 0; };
    return std::all_of(contents_.begin(), contents_.end(), isMade) &&
           std::any_of(contents_.begin(), contents_.end(), isChange);
  }

  Tcontent& contentOf(const TequipRec& record) { return contents_.find(&record)->second; }

  /// The first unclaimed record of their list with a content.
  TrecordIndex claim(Tcontent& content) {
    const TrecordIndex index = content.unclaimed.back();
    content.unclaimed.pop_back();
    isClaimed_[index] = true;
    return index;
  }

  /// Makes a change or removal of ours on a record that is still as it was, unless they made the same.
  bool settleChange(const TlistEdit& edit) {
    Tcontent& was = contentOf(*edit.was);
    if (was.theirs < 0 && (!edit.became || settleAsTheirs(edit))) {
      ++was.theirs;
      return true;
    }
    if (was.unclaimed.empty()) return !edit.became;
    const TrecordIndex index = claim(was);
    if (edit.became) {
      replace(index, *edit.became);
    } else {
      removed_.push_back(index);
    }
    return true;
  }

  /// Whether they have what our edit leads to and the base had not.
  bool settleAsTheirs(const TlistEdit& edit) {
    Tcontent& became = contentOf(*edit.became);
    if (became.theirs <= 0 || became.unclaimed.empty()) return false;
    claim(became);
    --became.theirs;
    return true;
  }

  static bool canJoinByNumber(const TlistEdit& edit) {
    return edit.was && edit.sameNumber == 0 && *edit.was->text(fieldControlNum) != '\0';
  }

  void countNumbers() {
    for (std::size_t i = 0; i < ours_.size(); ++i) {
      if (!isSettled_[i] && canJoinByNumber(ours_[i])) numbers_[ours_[i].was->text(fieldControlNum)];
    }
    if (numbers_.empty()) return;
    for (TrecordIndex index = 0; index < theirs_.count(); ++index) {
      const auto found = numbers_.find(theirs_.at(index).text(fieldControlNum));
      if (!isClaimed_[index] && found != numbers_.end()) found->second = {found->second.count + 1, index};
    }
  }

  bool joinByNumber(const TlistEdit& edit) {
    if (!canJoinByNumber(edit)) return false;
    Tnumber& number = numbers_[edit.was->text(fieldControlNum)];
    if (number.count != 1) return false;
    number.count = 0;
    replace(number.last, joinFields(*edit.was, *edit.became, theirs_.at(number.last)));
    return true;
  }

  /// Their record with what we changed.
  TequipRec joinFields(const TequipRec& was, const TequipRec& ours, TequipRec theirs) {
    const auto takeOurs = [this](const auto& before, const auto& our, const auto& their) {
      if (our != before && their != before && their != our) ++joined_.fieldsInBoth;
      return our != before;
    };
    for (const TtextField& field : textFields) {
      const std::string_view our = ours.text(field.id);
      if (takeOurs(std::string_view(was.text(field.id)), our, std::string_view(theirs.text(field.id)))) {
        theirs.setText(field.id, our);
      }
    }
    if (takeOurs(was.testProc(), ours.testProc(), theirs.testProc())) theirs.setTestProc(ours.testProc());
    return theirs;
  }

  void replace(TrecordIndex index, TequipRec record) {
    if (!(theirs_.at(index) == record)) joined_.change.add(TreplaceRecord{index, std::move(record)});
  }

  void addSteps() {
    const std::size_t left = theirs_.count() - removed_.size();
    std::sort(removed_.begin(), removed_.end());
    if (!removed_.empty()) joined_.change.add(TremoveRecords{std::move(removed_)});
    if (added_.empty()) return;
    std::vector<TrecordIndex> indices(added_.size());
    std::iota(indices.begin(), indices.end(), static_cast<TrecordIndex>(left));
    joined_.change.add(TinsertRecords{std::move(indices), std::move(added_)});
  }

  const TequipRecTable& theirs_;
  const TlistEdits& ours_;
  std::unordered_map<const TequipRec*, Tcontent, TrecordHash, TrecordsEqual> contents_;
  std::unordered_map<std::string_view, Tnumber> numbers_;
  std::vector<bool> isClaimed_;
  std::vector<bool> isSettled_;
  std::vector<TrecordIndex> removed_;
  std::vector<TequipRec> added_;
  Tjoined joined_;
};

}  // namespace

Tjoined joinLists(const TequipRecTable& theirs, const TlistEdits& ours) {
  return Tjoiner(theirs, ours).join();
}

TlistEdits joinAll(const TequipRecTable& theirs, std::vector<TlistEdits> programs) {
  if (programs.empty()) return {};
  if (programs.size() == 1) return std::move(programs[0]);
  TlistEdits made;
  TequipRecTable list = theirs;
  TrecordCounts counts(list);
  for (const TlistEdits& program : programs) {
    applyChange(list, joinLists(list, program).change, [&](const TlistStep& step) {
      for (TlistEdit& edit : editsOf(step, list, counts)) made.push_back(std::move(edit));
    });
  }
  return netEdits(std::move(made));
}
