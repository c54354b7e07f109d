#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "store/datastructs.h"

struct TcolumnMapping;
struct TimportOptions;

/// Watches an import run and decides what the run cannot decide.
class TimportObserver {
 public:
  enum class Tduplicate { renamed, skipped, stop };

  virtual ~TimportObserver() = default;

  /// Called before the first line, after each duplicate, and otherwise every few milliseconds, with the part of the
  /// file that has been read. Returns whether to go on.
  virtual bool goOn(int percent) = 0;

  /// Called for a Device ID that is in use. After `renamed` the record gets the text then in `deviceId`, in use or not.
  virtual Tduplicate duplicate(std::string& deviceId) = 0;
};

/// The result of an import run.
struct TimportRun {
  enum class Tend { done, cancelled, unreadable };

  Tend end = Tend::done;
  std::vector<TequipRec> records;  ///< in the file's order; empty unless done
  bool limitReached = false;       ///< the table has no room for more than these records
  bool malformed = false;          ///< a record came from a malformed line
  bool truncated = false;          ///< a Device ID was cut
  std::size_t lines = 0;           ///< read, from the start row on
  std::size_t duplicates = 0;      ///< Device IDs in use, whether renamed or skipped
};

/// Reads the records in a file; the caller adds them to `table`. Lines without a Device ID are skipped. Reading ends
/// when table and records together reach the limit. Once the observer has said stop, the table is not read any more: it
/// may be gone.
TimportRun runImport(const TimportOptions& options, const TcolumnMapping& mapping, std::size_t columnCount,
                     const TequipRecTable& table, TimportObserver& observer);
