#pragma once

#include <string_view>
#include <vector>

/// Views of a line's fields. Entry 0 is always empty, so that the index of a field is its column, counted from 1. The
/// list has one entry more than the line has fields.
using TfieldList = std::vector<std::string_view>;

/// Splits a line into fields, without trimming them.
///
/// Without `quotes`, each field ends with the delimiter or with the line; a delimiter at the end of the line starts no
/// further field, and quotes are ordinary characters. With `quotes`, a field is the text between one double quote and
/// the next; everything else is skipped: delimiters, fields without quotes, and a text without a second quote.
///
/// `used` is a list that is no longer needed; the result reuses its memory.
TfieldList tokenise(std::string_view line, char delimiter, bool quotes, TfieldList used = {});
