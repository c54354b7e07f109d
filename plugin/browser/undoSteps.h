#pragma once

#include <QString>
#include <QUndoStack>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "store/listChange.h"

/// What a step of the user did to the list.
enum class TstepKind : std::uint8_t { addition, copying, deletion, change, import, restoration };

/// The two ways to go through the steps.
enum class TstepWay : std::uint8_t { undo, redo };

/// The records that a change touches.
struct TtouchedRecords {
  std::vector<bool> removed;   ///< by index before the change: whether it removes the record
  std::vector<bool> replaced;  ///< by index before the change: whether it replaces the record, and does not remove it
  std::vector<bool> present;   ///< by index after the change: whether it inserts or replaces the record
};

/// What a change will do to a list of `count` records. Takes time linear in the list for each step that inserts or
/// removes.
TtouchedRecords touchedBy(const TlistChange& change, std::size_t count);

/// The steps of this session that the user can undo and redo, without limit. Each holds the one change that leads over
/// it, and swaps it for its inverse on the way, so that no record is copied.
class TundoSteps {
 public:
  /// Makes a change of the list, and returns the change that takes it back.
  using TmakeChange = std::function<TlistChange(TlistChange)>;

  explicit TundoSteps(TmakeChange makeChange) : makeChange_(std::move(makeChange)) {}

  /// Adds a step that was just made, and forgets the undone ones. `inverse` takes it back; if it touches no record,
  /// there is no step.
  void add(TstepKind kind, TlistChange inverse);
  void clear() { stack_.clear(); }

  bool can(TstepWay way) const { return way == TstepWay::undo ? stack_.canUndo() : stack_.canRedo(); }
  /// What a button's tooltip says: "Undo the deletion of 12 records (Ctrl+Z)".
  QString toolTip(TstepWay way) const;
  /// What the step did, and to how many records: "the deletion of 12 records". There must be a step that way.
  QString text(TstepWay way) const { return way == TstepWay::undo ? stack_.undoText() : stack_.redoText(); }
  std::size_t count(TstepWay way) const;
  /// The change that `go` will make. There must be a step that way.
  const TlistChange& next(TstepWay way) const;
  void go(TstepWay way) { way == TstepWay::undo ? stack_.undo() : stack_.redo(); }

 private:
  TmakeChange makeChange_;
  QUndoStack stack_;
};
