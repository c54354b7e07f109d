#pragma once

#include <string_view>
#include <vector>

/// The fields of a line, which they point into. Entry 0 is always empty, so that the entries count as columns do: from
/// 1. A line has one field less than the list has entries.
using TfieldList = std::vector<std::string_view>;

/// Splits a line into fields, nothing trimmed.
///
/// Without quotes the delimiter ends a field; none follows the last delimiter of a line, and quotes are characters as
/// any other. With quotes only what stands between a double quote and the next is a field, and everything else is
/// passed over: delimiters, fields without quotes, and a text whose second quote is missing.
///
/// The memory of `used`, a list that is not needed any more, serves for the new one.
TfieldList tokenise(std::string_view line, char delimiter, bool quotes, TfieldList used = {});
