#pragma once

#include <cstddef>
#include <cstdint>

#include "store/datastructs.h"

/// Hash of everything that a record holds. Equal records have the same; it differs between builds and platforms.
std::uint64_t hashOf(const TequipRec& record);

/// Hash and comparison for a table whose keys are records that it does not own.
struct TrecordHash {
  std::size_t operator()(const TequipRec* record) const { return static_cast<std::size_t>(hashOf(*record)); }
};
struct TrecordsEqual {
  bool operator()(const TequipRec* one, const TequipRec* other) const { return *one == *other; }
};
