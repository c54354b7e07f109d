#pragma once

#include <filesystem>
#include <string>

#include "store/commitMarker.h"

class TfileSystem;

/// The record files at `dataPath` and `infoPath`, or those of them that exist, copied to a number of their own
/// (`eq.dat.kept-1`, `eqinfo.dat.kept-1`) beside them. Copies of equal content are made once. A copy has its name only
/// when it is whole and on the disk. Returns the names of the copies, "eq.dat.kept-1 and eqinfo.dat.kept-1"; empty if
/// neither file exists. Throws `TERException` with code 1 if a file cannot be read or a copy cannot be made.
std::string keepCopies(TfileSystem& files, const std::filesystem::path& dataPath,
                       const std::filesystem::path& infoPath);

/// Before the first save of a day that changes the record files: copies those that it replaces to `BACKUP/2026-11-21/`
/// beside them, whole or not at all, and removes such folders except for the newest 14. `sums` are the fingerprints of
/// the new files, `today` is a date like that. A failure is logged, and hinders no save.
void backUp(TfileSystem& files, const std::filesystem::path& dataPath, const std::filesystem::path& infoPath,
            const TpairSums& sums, const std::string& today) noexcept;

/// Today's date where this machine is, as "2026-11-21".
std::string todaysDate();
