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

/// Finds the lines of the two files that describe the same record.
///
/// Lists that are whole and equally long are paired by position, whatever their control numbers. Otherwise lines at the
/// same place, counted from the start or the end of the files, are paired if their control numbers agree. The rest is
/// paired by control number, in order. If both files have as many lines, entries that are left on the same line are
/// paired last. So a dropped line costs its own record and no other.
///
/// Where both files have as many lines and both lost some, an entry whose partner on the same line was dropped is
/// paired with another line only if each file has its control number once: equal numbers would give it the texts of a
/// stranger.
Tpairing pairLists(const TdataList& data, const TinfoList& info);
