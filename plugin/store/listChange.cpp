#include "store/listChange.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace {

using Trecords = std::vector<TequipRec>;
using Tindices = std::vector<TrecordIndex>;

/// Throws unless the indices ascend and are all below `end`.
void check(const Tindices& indices, std::size_t end) {
  const bool ascending = std::adjacent_find(indices.begin(), indices.end(), std::greater_equal<>()) == indices.end();
  if (!ascending || (!indices.empty() && indices.back() >= end)) throw std::out_of_range("step of a list change");
}

TlistStep make(TinsertRecords step, Trecords& records) {
  const std::size_t count = records.size() + step.records.size();
  if (step.indices.size() != step.records.size()) throw std::out_of_range("step of a list change");
  check(step.indices, count);
  Trecords merged;
  merged.reserve(count);
  auto next = step.indices.begin();
  auto inserted = step.records.begin();
  auto old = records.begin();
  while (merged.size() < count) {
    const bool isNew = next != step.indices.end() && *next == merged.size();
    merged.push_back(std::move(isNew ? *inserted++ : *old++));
    if (isNew) ++next;
  }
  records = std::move(merged);
  return TremoveRecords{std::move(step.indices)};
}

TlistStep make(TremoveRecords step, Trecords& records) {
  check(step.indices, records.size());
  TinsertRecords inverse;
  inverse.records.reserve(step.indices.size());
  auto next = step.indices.begin();
  std::size_t kept = step.indices.empty() ? records.size() : *next;
  for (std::size_t index = kept; index < records.size(); ++index) {
    if (next != step.indices.end() && *next == index) {
      inverse.records.push_back(std::move(records[index]));
      ++next;
    } else {
      records[kept++] = std::move(records[index]);
    }
  }
  records.erase(records.begin() + static_cast<std::ptrdiff_t>(kept), records.end());
  inverse.indices = std::move(step.indices);
  return {std::move(inverse)};
}

TlistStep make(TreplaceRecord step, Trecords& records) {
  std::swap(records.at(step.index), step.record);
  return {std::move(step)};
}

}  // namespace

TlistChange TlistChange::append(std::size_t count, std::vector<TequipRec> records) {
  Tindices indices(records.size());
  std::iota(indices.begin(), indices.end(), static_cast<TrecordIndex>(count));
  return TlistChange(TinsertRecords{std::move(indices), std::move(records)});
}

/// Makes a step and returns its inverse.
TlistStep TlistChange::makeStep(TequipRecTable& table, TlistStep step) {
  table.revision_ = TequipRecTable::newRevision();
  return std::visit([&](auto& made) { return make(std::move(made), table.records_); }, step);
}

TlistChange applyChange(TequipRecTable& table, TlistChange change, const TstepListener& beforeStep) {
  TlistChange inverse;
  for (TlistStep& step : change.steps_) {
    if (beforeStep) beforeStep(step);
    inverse.add(TlistChange::makeStep(table, std::move(step)));
  }
  std::reverse(inverse.steps_.begin(), inverse.steps_.end());
  return inverse;
}
