#include "store/recordEdits.h"

#include <functional>
#include <variant>

#include "store/recordHash.h"

namespace {

constexpr std::uint64_t factor = 0x9E3779B97F4A7C15;

std::uint64_t textHash(std::string_view text) {
  return std::hash<std::string_view>()(text);
}

/// Control numbers count in the same table as records, so their hashes must differ from those of records.
std::uint64_t numberHash(const TequipRec& record) {
  return (textHash(record.text(fieldControlNum)) + 1) * factor;
}

using Tcounts = std::unordered_map<std::uint64_t, std::uint32_t>;

std::uint32_t countOf(const Tcounts& counts, std::uint64_t hash) {
  const auto found = counts.find(hash);
  return found == counts.end() ? 0 : found->second;
}

void takeOne(Tcounts& counts, std::uint64_t hash) {
  const auto found = counts.find(hash);
  if (found != counts.end() && --found->second == 0) counts.erase(found);
}

/// Makes edits one by one, with the counts before each.
class TeditMaker {
 public:
  TeditMaker(const TequipRecTable& table, TrecordCounts& counts) : table_(table), counts_(counts) {}

  void operator()(const TinsertRecords& step) {
    edits_.reserve(step.records.size());
    for (const TequipRec& record : step.records) make(nullptr, &record);
  }
  void operator()(const TremoveRecords& step) {
    edits_.reserve(step.indices.size());
    for (const TrecordIndex index : step.indices) make(&table_.at(index), nullptr);
  }
  void operator()(const TreplaceRecord& step) {
    if (!(table_.at(step.index) == step.record)) make(&table_.at(step.index), &step.record);
  }

  TlistEdits take() { return std::move(edits_); }

 private:
  void make(const TequipRec* was, const TequipRec* became) {
    TlistEdit& edit = edits_.emplace_back();
    if (became != nullptr) {
      edit.became = *became;
      edit.alike = counts_.equalTo(*became);
    }
    if (was != nullptr) {
      edit.was = *was;
      counts_.remove(*was);
      edit.sameNumber = counts_.withNumberOf(*was);
      edit.sameContent = counts_.equalTo(*was);
    }
    if (became != nullptr) counts_.add(*became);
  }

  const TequipRecTable& table_;
  TrecordCounts& counts_;
  TlistEdits edits_;
};

}  // namespace

std::uint64_t hashOf(const TequipRec& record) {
  std::uint64_t hash = record.testProc();
  for (const TtextField& field : textFields) hash = hash * factor + textHash(record.text(field.id));
  return hash;
}

TrecordCounts::TrecordCounts(const TequipRecTable& table) {
  counts_.reserve(2 * table.count());
  for (TrecordIndex index = 0; index < table.count(); ++index) add(table.at(index));
}

void TrecordCounts::add(const TequipRec& record) {
  ++counts_[hashOf(record)];
  ++counts_[numberHash(record)];
}

void TrecordCounts::remove(const TequipRec& record) {
  takeOne(counts_, hashOf(record));
  takeOne(counts_, numberHash(record));
}

std::uint32_t TrecordCounts::equalTo(const TequipRec& record) const {
  return countOf(counts_, hashOf(record));
}

std::uint32_t TrecordCounts::withNumberOf(const TequipRec& record) const {
  return countOf(counts_, numberHash(record));
}

TlistEdits editsOf(const TlistStep& step, const TequipRecTable& table, TrecordCounts& counts) {
  TeditMaker maker(table, counts);
  std::visit(maker, step);
  return maker.take();
}
