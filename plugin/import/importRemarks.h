#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "import/columnMapping.h"

/// What an import can have to say about a row of the file.
enum class TremarkKind : std::uint8_t {
  noDeviceId,
  knownSkipped,
  knownSeveral,  ///< several records have this Device ID, so that none was updated
  beyondLimit,
  otherBreak,  ///< a carriage return within the row was not taken for a line end
  rowCut,      ///< longer than a row may be
  quoteNotClosed,
  otherFieldCount,
  deviceIdCut,
  fieldCut,
  cutAtZero,  ///< a zero byte ends a text
  characterReplaced,
  procedureUnreadable
};

/// One thing that was found in a row.
struct TimportFinding {
  TremarkKind kind;
  std::size_t field = importFieldCount;  ///< none: the row as a whole
  std::string was;                       ///< the text that was cut or not understood (Windows-1252)
  std::u32string characters;             ///< that were replaced
};

/// A finding, and where it was made.
struct TimportRemark {
  std::size_t row = 0;   ///< in the file, counted from 1
  std::string deviceId;  ///< Windows-1252
  TimportFinding finding;
};

/// The remarks of one import. Beyond the most that it keeps, it only counts them.
class TimportReport {
 public:
  static constexpr std::size_t mostKept = 20000;

  void add(TimportRemark remark) {
    if (++count_ <= mostKept) kept_.push_back(std::move(remark));
  }
  const std::vector<TimportRemark>& kept() const { return kept_; }
  /// With those that are not kept.
  std::size_t count() const { return count_; }

 private:
  std::vector<TimportRemark> kept_;
  std::size_t count_ = 0;
};
