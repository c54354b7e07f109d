#pragma once

#include <cstdint>
#include <vector>

#include "store/recordLines.h"

/// Positions in the two lists whose lines describe one record.
struct Tpair {
  std::uint32_t data;
  std::uint32_t info;
};

struct Tpairing {
  std::vector<Tpair> pairs;  ///< in the order of the data file
  bool complete = true;      ///< false: an entry of one of the lists found no partner
};

/// Which line of the data file and which of the information file describe the same record.
///
/// Lists that are whole and equally long are paired by position, whatever their control numbers say. Otherwise lines
/// that still stand at the same place, counted from the files' starts or ends, are paired where their control numbers
/// agree; then the rest by control number, in order; then, in files with equally many lines, what is left on the same
/// line. So a dropped line costs its own record and no other.
Tpairing pairLists(const TdataList& data, const TinfoList& info);
