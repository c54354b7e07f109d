#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "import/tokeniser.h"
#include "store/datastructs.h"

struct TcolumnMapping;

/// What was doubtful about a line.
struct TlineFindings {
  bool malformed = false;  ///< another number of fields than expected, or a field that does not hold what it should
  bool truncated = false;  ///< the Device ID was too long
};

/// A column of a line as it enters a record and is shown beforehand: a double quote, which the record files cannot
/// hold, becomes the typographic closing one (byte 0x94), and a zero byte ends the text. Empty for column 0 and for a
/// column that the line does not have.
std::string importedText(const TfieldList& fields, std::size_t column);

/// The record in a line, each text cut to its field's longest length; nothing where the line has no Device ID, and then
/// no finding either. `columnCount` is the number of fields that a line should have. Findings are added to those that
/// there are.
std::optional<TequipRec> recordInLine(const TfieldList& fields, const TcolumnMapping& mapping, std::size_t columnCount,
                                      TlineFindings& findings);
