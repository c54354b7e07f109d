#pragma once

#include <string>
#include <vector>

#include "store/datastructs.h"

struct TcolumnMapping;
struct TimportOptions;

/// Who watches an import run, and decides where it cannot.
class TimportObserver {
 public:
  enum class Tduplicate { renamed, skipped, stop };

  virtual ~TimportObserver() = default;

  /// Called before the first line, after each duplicate, and otherwise every few milliseconds, with the part of the
  /// file that was read. Returns whether to go on.
  virtual bool goOn(int percent) = 0;

  /// Called for a Device ID that is in use. With `renamed` the record gets what `deviceId` then holds, in use or not.
  virtual Tduplicate duplicate(std::string& deviceId) = 0;
};

/// What an import run has brought.
struct TimportRun {
  enum class Tend { done, cancelled, unreadable };

  Tend end = Tend::done;
  std::vector<TequipRec> records;  ///< in the file's order; empty unless done
  bool limitReached = false;       ///< table and records together fill the table
  bool malformed = false;          ///< a record was taken from a line that is not as it should be
  bool truncated = false;          ///< a Device ID was cut
};

/// Reads the records of a file that are to be added to `table`, and adds none. Lines without a Device ID are passed
/// over; reading ends where table and records together reach the limit. Once the observer has said stop, the table is
/// not looked at any more: it may be gone.
TimportRun runImport(const TimportOptions& options, const TcolumnMapping& mapping, std::size_t columnCount,
                     const TequipRecTable& table, TimportObserver& observer);
