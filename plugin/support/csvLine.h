#pragma once

#include <string>
#include <string_view>

#include "support/recordText.h"

/// Adds a cell to a row of comma-separated values (RFC 4180). It is put in quotes where a reader would otherwise change
/// it: with a comma, a quote, a line break, or blanks at its ends.
inline void addCsvCell(std::string& row, std::string_view text, bool isFirst) {
  if (!isFirst) row += ',';
  const bool isPlain =
      text.find_first_of(",\"\r\n") == std::string_view::npos && trimmedText(text).size() == text.size();
  if (isPlain) {
    row += text;
    return;
  }
  row += '"';
  for (const char c : text) row.append(c == '"' ? 2 : 1, c);
  row += '"';
}
