#include "browser/undoSteps.h"

#include <QUndoCommand>
#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace {

/// One step of the user's. The stack calls `redo` once when the step is added; the change is already made then.
class TundoStep : public QUndoCommand {
 public:
  TundoStep(const QString& text, const TundoSteps::TmakeChange& makeChange, TlistChange inverse)
      : QUndoCommand(text), makeChange_(makeChange), change_(std::move(inverse)) {}

  const TlistChange& change() const { return change_; }

  void undo() override { change_ = makeChange_(std::move(change_)); }
  void redo() override {
    if (!std::exchange(isNew_, false)) change_ = makeChange_(std::move(change_));
  }

 private:
  const TundoSteps::TmakeChange& makeChange_;
  TlistChange change_;
  bool isNew_ = true;
};

std::size_t touchedCount(const TlistStep& step) {
  if (std::holds_alternative<TreplaceRecord>(step)) return 1;
  const auto* inserted = std::get_if<TinsertRecords>(&step);
  return inserted != nullptr ? inserted->indices.size() : std::get<TremoveRecords>(step).indices.size();
}

std::size_t touchedCount(const TlistChange& change) {
  std::size_t count = 0;
  for (const TlistStep& step : change.steps()) count += touchedCount(step);
  return count;
}

QString stepText(TstepKind kind, std::size_t count) {
  constexpr std::array names = {"addition", "copying", "deletion", "change", "import", "restoration"};
  const auto name = QString::fromLatin1(names.at(static_cast<std::size_t>(kind)));
  return count == 1 ? QStringLiteral("the %1 of a record").arg(name)
                    : QStringLiteral("the %1 of %2 records").arg(name).arg(count);
}

/// Follows each record through the steps of a change.
class Ttracker {
 public:
  explicit Ttracker(std::size_t count) : removed_(count) {
    for (std::size_t index = 0; index < count; ++index) places_.push_back({index, false});
  }

  void operator()(const TinsertRecords& step) {
    std::vector<Tplace> merged;
    merged.reserve(places_.size() + step.indices.size());
    auto old = places_.cbegin();
    for (const TrecordIndex index : step.indices) {
      while (merged.size() < index) merged.push_back(*old++);
      merged.push_back({std::nullopt, true});
    }
    merged.insert(merged.end(), old, places_.cend());
    places_ = std::move(merged);
  }

  void operator()(const TremoveRecords& step) {
    std::vector<Tplace> kept;
    auto next = step.indices.begin();
    for (std::size_t index = 0; index < places_.size(); ++index) {
      const Tplace& place = places_[index];
      const bool goes = next != step.indices.end() && *next == index;
      if (goes) ++next;
      if (goes && place.origin) removed_[*place.origin] = true;
      if (!goes) kept.push_back(place);
    }
    places_ = std::move(kept);
  }

  void operator()(const TreplaceRecord& step) { places_.at(step.index).touched = true; }

  TtouchedRecords result() {
    std::vector<bool> replaced(removed_.size());
    std::vector<bool> present;
    for (const Tplace& place : places_) {
      present.push_back(place.touched);
      if (place.touched && place.origin) replaced[*place.origin] = true;
    }
    return {std::move(removed_), std::move(replaced), std::move(present)};
  }

 private:
  struct Tplace {
    std::optional<std::size_t> origin;  ///< its index before the change; none for an inserted record
    bool touched;
  };

  std::vector<Tplace> places_;
  std::vector<bool> removed_;
};

}  // namespace

TtouchedRecords touchedBy(const TlistChange& change, std::size_t count) {
  Ttracker tracker(count);
  for (const TlistStep& step : change.steps()) std::visit(tracker, step);
  return tracker.result();
}

void TundoSteps::add(TstepKind kind, TlistChange inverse) {
  const std::size_t count = touchedCount(inverse);
  if (count > 0) stack_.push(new TundoStep(stepText(kind, count), makeChange_, std::move(inverse)));
}

QString TundoSteps::toolTip(TstepWay way) const {
  const bool undo = way == TstepWay::undo;
  if (!can(way)) return undo ? QStringLiteral("Nothing to undo (Ctrl+Z)") : QStringLiteral("Nothing to redo (Ctrl+Y)");
  return undo ? QStringLiteral("Undo %1 (Ctrl+Z)").arg(text(way)) : QStringLiteral("Redo %1 (Ctrl+Y)").arg(text(way));
}

std::size_t TundoSteps::count(TstepWay way) const {
  return touchedCount(next(way));
}

const TlistChange& TundoSteps::next(TstepWay way) const {
  const int index = way == TstepWay::undo ? stack_.index() - 1 : stack_.index();
  return static_cast<const TundoStep*>(stack_.command(index))->change();
}
