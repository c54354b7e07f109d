#pragma once

#include <array>
#include <optional>
#include <string>

#include "store/datastructs.h"

/// The seven texts (Windows-1252) that the editor's boxes hold, by field id.
struct TrecordFields {
  std::array<std::string, fieldCount> texts;

  static TrecordFields load(const TequipRec& record);

  /// Puts the texts into the record, without blanks and control characters at their ends.
  void store(TequipRec& record) const;

  /// What OK does: takes the texts as they are, then the test procedure where one was chosen, then stores.
  void accept(TequipRec& record, std::optional<unsigned> testProc) const;
};
