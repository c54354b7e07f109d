#pragma once

#include <string>
#include <utility>
#include <vector>

#include "store/listChange.h"

/// A record with these texts in its first fields.
inline TequipRec makeRecord(const std::vector<std::string>& texts, unsigned testProc = 1) {
  TequipRec record;
  for (std::size_t i = 0; i < texts.size(); ++i) record.setText(static_cast<int>(i), std::string_view(texts[i]));
  record.setTestProc(testProc);
  return record;
}

/// A list without a window.
struct TtestList final : TlistOwner {
  const TequipRecTable& records() const override { return table; }
  void change(TlistChange change) override { applyChange(table, std::move(change)); }

  TequipRecTable table;
};

/// Adds one record at the end of a table.
inline void append(TequipRecTable& table, TequipRec record) {
  applyChange(table, TlistChange::append(table.count(), {std::move(record)}));
}

/// Lets `edit` change one record of a list that has `records()` and `change()`.
template <typename List, typename Edit>
void edit(List& list, TrecordIndex index, Edit edit) {
  TequipRec record = list.records().at(index);
  edit(record);
  list.change(TlistChange(TreplaceRecord{index, std::move(record)}));
}
