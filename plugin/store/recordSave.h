#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>

#include "store/erException.h"

class TequipRecTable;
class TfileSystem;
class TsavedPair;
struct TpairSums;

/// Writes the first `count` records of `store` to the data file and the information file, both or none. Returns 0, or 2
/// or 3 if a file could not be opened for writing, 2 also as `prepareSave` does. Throws `TERException` with code 4 for
/// an empty path, 8 if a file could not be flushed or closed, and 1 for any other failure. After a failure the old
/// files are unchanged or, if only the very last step failed, the next load finishes the save.
TERResult TequipRecToFile(const TequipRecTable& store, std::size_t count, const std::filesystem::path& dataPath,
                          const std::filesystem::path& infoPath, TfileSystem& files);

/// Locks and recovers a pair that is to be saved. Returns 0, or 2 if another program held the lock all the time, or if
/// an earlier save that was decided cannot be finished yet: it must not lose its files to this one.
TERResult prepareSave(TsavedPair& pair);

/// Saves to a pair that was locked and recovered. `beforeCommit` gets the fingerprints of the new files when both are
/// on the disk and nothing has been replaced yet. If it throws, the save has failed.
TERResult savePair(const TequipRecTable& store, std::size_t count, TsavedPair& pair, TfileSystem& files,
                   const std::function<void(const TpairSums&)>& beforeCommit);
