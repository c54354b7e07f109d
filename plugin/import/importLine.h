#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "import/tokeniser.h"
#include "store/datastructs.h"

struct TcolumnMapping;

/// What was wrong with a line.
struct TlineFindings {
  bool malformed = false;  ///< an unexpected number of fields, or a field with unexpected content
  bool truncated = false;  ///< the Device ID was too long
};

/// A column of a line as it enters a record and as the preview shows it: without double quotes (see
/// `withoutDoubleQuotes`) and cut at a zero byte. Empty for column 0 and for a column that the line lacks.
std::string importedText(const TfieldList& fields, std::size_t column);

/// The record in a line, with each text cut to its field's longest length. Nothing when the line has no Device ID; such
/// a line adds no findings. `columnCount` is the number of fields that a line should have. Adds to `findings`.
std::optional<TequipRec> recordInLine(const TfieldList& fields, const TcolumnMapping& mapping, std::size_t columnCount,
                                      TlineFindings& findings);
