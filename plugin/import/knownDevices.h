#pragma once

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "store/datastructs.h"
#include "support/textIndex.h"

/// The records that a Device ID names: those of the list, and those that an import has read so far.
class TknownDevices {
 public:
  /// What is known of one Device ID.
  struct Tdevice {
    TrecordIndex index = 0;  ///< of the first record that has it: in the list or, if `isNew`, among those read
    bool isNew = true;
    bool isSeveral = false;  ///< more than one record has it
  };

  /// Blanks and tabs around a Device ID do not count. The texts of the records must outlive this object. There is room
  /// for `equipRecLimit` records.
  explicit TknownDevices(const TequipRecTable& table);

  /// Null if no record has this Device ID. Valid until the next call of `add`.
  const Tdevice* find(std::string_view deviceId) const;
  /// Adds a record that was read, unless its Device ID is known. Returns what is known, and whether it was added. The
  /// record may be moved, as that does not move its texts.
  std::pair<Tdevice*, bool> add(const TequipRec& record, TrecordIndex index);

 private:
  TtextIndex index_;
  std::vector<Tdevice> devices_;  ///< by their numbers in the index
};
