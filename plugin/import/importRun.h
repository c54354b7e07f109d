#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "import/importRemarks.h"
#include "store/datastructs.h"
#include "store/listChange.h"

struct TcolumnMapping;
struct TimportOptions;

/// Watches an import run and decides what the run cannot decide.
class TimportObserver {
 public:
  enum class Tduplicate { renamed, skipped, stop };

  virtual ~TimportObserver() = default;

  /// Called before the first row, after each duplicate, and otherwise every few milliseconds, with the part of the
  /// file that has been read. Returns whether to go on.
  virtual bool goOn(int percent) = 0;

  /// Called for a Device ID that is in use, where the user wants to be asked. After `renamed` the record gets the text
  /// then in `deviceId`, in use or not.
  virtual Tduplicate duplicate(std::string& deviceId) = 0;
};

/// The result of an import run.
struct TimportRun {
  enum class Tend { done, cancelled, unreadable };

  Tend end = Tend::done;
  std::vector<TequipRec> records;       ///< to be added, in the file's order; empty unless done
  std::vector<TreplaceRecord> updates;  ///< of records of the table, by index; empty unless done
  bool limitReached = false;            ///< the table has no room for more than these records
  bool malformed = false;               ///< a record came from a malformed row
  bool truncated = false;               ///< a Device ID was cut

  // Rows, from the start row on.
  std::size_t rows = 0;             ///< that were read
  std::size_t duplicates = 0;       ///< whose Device ID was in use
  std::size_t updated = 0;          ///< that updated a record of the table, or one that was read before
  std::size_t skipped = 0;          ///< with a Device ID, but neither added nor taken for an update
  std::size_t withoutDeviceId = 0;  ///< and not empty
  std::size_t withRemarks = 0;      ///< added or taken for an update, and there is something to say about them
  TimportReport report;
};

/// Reads the records in a file; the caller adds them to `table`. Rows without a Device ID are skipped. Reading ends
/// when table and records together reach the limit, but goes on to the end of the file where known devices are updated.
/// Once the observer has said stop, the table is not read any more: it may be gone.
TimportRun runImport(const TimportOptions& options, const TcolumnMapping& mapping, std::size_t columnCount,
                     const TequipRecTable& table, TimportObserver& observer);

/// The change that an import makes: replaces what it has updated, and appends what it has added.
TlistChange changeOf(TimportRun& run, const TequipRecTable& table);
