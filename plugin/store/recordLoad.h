#pragma once

#include <cstddef>
#include <filesystem>

#include "store/erException.h"

class TequipRecTable;
class TfileSystem;
class TsavedPair;
struct TpairSums;

/// Finishes an interrupted save, then fills `store` from the data file and the information file. Returns status 0, or:
/// 2 or 3 if a file could not be opened (the store is empty), 2 also if another program held the lock all the time, 4
/// for invalid arguments (an empty path is a missing one), 7 if a file has more than `recordLimit` + 1 records (those
/// are in the store), 9 if corrupt lines or records were left out. Throws `TERException`, and leaves the store empty,
/// if a file cannot be read to its end or has more than 64 MB, or if an interrupted save may have left a mixed pair
/// that cannot be told from a whole one at the moment.
///
/// The result is not `complete` if the records lack something that the files say: the end of a text longer than its
/// field, or a second control number (the one in the data file counts).
TERResult TequipRecFromFile(TequipRecTable* store, std::size_t recordLimit, const std::filesystem::path& dataPath,
                            const std::filesystem::path& infoPath, TfileSystem& files);

/// Recovers a pair that is to be loaded. Throws `TERException` with code 1 if it cannot be told what a killed save
/// left: the two files may then belong to different saves.
void recoverToLoad(TsavedPair& pair);

/// Loads a pair that was locked and recovered. `sums` get the fingerprints of the files if both could be read.
TERResult loadPair(TequipRecTable& store, std::size_t recordLimit, TsavedPair& pair, TfileSystem& files,
                   TpairSums& sums);
