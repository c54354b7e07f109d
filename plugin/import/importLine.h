#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "import/importRemarks.h"
#include "import/rowReader.h"
#include "store/datastructs.h"

/// A Device ID without the blanks and tabs around it.
std::string_view withoutBlanks(std::string_view deviceId);

/// A column of a row as it enters a field and as the preview shows it: without double quotes and control characters
/// (see `withoutDoubleQuotes` and `withoutControls`; a procedure number keeps them) and cut at a zero byte; a Device ID
/// also without blanks and tabs around it. Empty for column 0 and for a column that the row lacks.
std::string importedText(const TfieldList& fields, std::size_t column, std::size_t field);

/// A row as a record.
struct TimportedRow {
  TequipRec record;  ///< each text is cut to its field's longest length
  /// Whether the row has something for the field: it has the field's column, and a test procedure number in it can be
  /// read.
  std::array<bool, importFieldCount> isGiven{};
  std::vector<TimportFinding> findings;

  bool hasDeviceId() const { return record.text(fieldControlNum)[0] != '\0'; }
  bool has(TremarkKind kind) const;
};

/// Makes a record of a row. `columnCount` is the number of fields that a row should have. A row without a Device ID has
/// that as its only finding, and none if it is an empty line. `used` is no longer needed; the result reuses its memory.
TimportedRow recordInRow(const TimportRow& row, const TcolumnMapping& mapping, std::size_t columnCount,
                         TimportedRow used = {});
