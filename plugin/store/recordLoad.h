#pragma once

#include <cstddef>
#include <filesystem>

#include "store/erException.h"

class TequipRecTable;
class TfileSystem;

/// Fills `store` from the data file and the information file, after finishing a save of them that was interrupted.
/// Returns 0, or: 2 or 3 where a file could not be opened (the store is empty), 4 for invalid arguments (an empty path
/// is a missing one), 7 for more than `recordLimit` + 1 records in a file (those are in the store), 9 where lines or
/// records were left out as corrupt. Throws `TERException`, and leaves the store empty, where a file fails while it is
/// read.
///
/// `complete`, where given, becomes false when the records do not hold all that the files say: a text longer than its
/// field, or two control numbers that differ, which the data file's wins.
TERStatus TequipRecFromFile(TequipRecTable* store, std::size_t recordLimit, const std::filesystem::path& dataPath,
                            const std::filesystem::path& infoPath, TfileSystem& files, bool* complete = nullptr);
