#pragma once

#include <functional>
#include <variant>
#include <vector>

#include "store/datastructs.h"

/// Inserts records. `indices` are the places that they have afterwards, ascending, one for each record.
struct TinsertRecords {
  std::vector<TrecordIndex> indices;
  std::vector<TequipRec> records;
};

/// Removes the records at these places, ascending.
struct TremoveRecords {
  std::vector<TrecordIndex> indices;
};

/// Replaces the record at this place.
struct TreplaceRecord {
  TrecordIndex index = 0;
  TequipRec record;
};

using TlistStep = std::variant<TinsertRecords, TremoveRecords, TreplaceRecord>;

using TstepListener = std::function<void(const TlistStep& step)>;

/// A change of the list of records, as a value: steps to be made in order, each on the list that the one before leaves.
class TlistChange {
 public:
  TlistChange() = default;
  explicit TlistChange(TlistStep step) { add(std::move(step)); }

  /// Adds `records` behind the last of a list of `count` records.
  static TlistChange append(std::size_t count, std::vector<TequipRec> records);

  void add(TlistStep step) { steps_.push_back(std::move(step)); }
  bool isEmpty() const { return steps_.empty(); }
  const std::vector<TlistStep>& steps() const { return steps_; }

 private:
  friend TlistChange applyChange(TequipRecTable& table, TlistChange change, const TstepListener& beforeStep);

  static TlistStep makeStep(TequipRecTable& table, TlistStep step);

  std::vector<TlistStep> steps_;
};

/// Makes a change. Returns the change that takes it back. Each step takes time linear in the table, or constant where
/// it replaces a record. Every index must fit the list that its step finds; otherwise `std::out_of_range` is thrown,
/// and the steps before that one remain made. `beforeStep` is told each step before it is made.
TlistChange applyChange(TequipRecTable& table, TlistChange change, const TstepListener& beforeStep = {});

/// Who owns the list: gives it to read, and makes every change to it.
class TlistOwner {
 public:
  TlistOwner() = default;
  TlistOwner(const TlistOwner&) = delete;
  TlistOwner& operator=(const TlistOwner&) = delete;
  virtual ~TlistOwner() = default;

  virtual const TequipRecTable& records() const = 0;
  virtual void change(TlistChange change) = 0;
};
