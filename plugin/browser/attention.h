#pragma once

#include <QString>
#include <cstdint>
#include <vector>

#include "store/datastructs.h"

class TtestProcTable;

/// The records that somebody should look at, because the analyzer finds units by what they lack: records without a
/// control number or with that of another record, and records whose test procedure is titled "(UNUSED)" or has no title
/// although a list of titles was loaded.
///
/// Takes time linear in the table, and only when the table has changed. Table and titles must outlive it.
class Tattention {
 public:
  Tattention(const TequipRecTable& records, const TtestProcTable& titles) : records_(records), titles_(titles) {}

  /// In table order.
  const std::vector<TrecordIndex>& records();
  /// "No control number. The test procedure has no title."; empty for a record that is in order.
  QString reason(TrecordIndex index);
  /// The number of records without a control number or with that of another record.
  std::size_t withoutOwnControlNum();

 private:
  void refresh();
  void markControlNums();
  void markTestProcs();

  const TequipRecTable& records_;
  const TtestProcTable& titles_;
  std::uint64_t revision_ = 0;         ///< of the table that was looked at; 0 for none
  std::vector<std::uint8_t> reasons_;  ///< by record: the reasons' bits
  std::vector<TrecordIndex> found_;
};
