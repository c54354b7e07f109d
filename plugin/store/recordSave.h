#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>

#include "store/erException.h"

class TequipRecTable;
class TfileSystem;

/// Writes the first `count` records of `store` to the data file and the information file, both or none. Returns 0, or 2
/// or 3 if a file could not be opened for writing. Throws `TERException` with code 4 for an empty path, 8 if a file
/// could not be flushed or closed, and 1 for any other failure. After a failure the old files are unchanged or, if only
/// the very last step failed, the next load finishes the save.
///
/// `beforeCommit` runs when both new files are on the disk and nothing has been replaced yet. If it throws, the save
/// has failed.
TERResult TequipRecToFile(const TequipRecTable& store, std::size_t count, const std::filesystem::path& dataPath,
                          const std::filesystem::path& infoPath, TfileSystem& files,
                          const std::function<void()>& beforeCommit = {});
