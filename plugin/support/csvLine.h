#pragma once

#include <string>
#include <string_view>

/// Adds a field to a line of comma-separated values (RFC 4180). It is put in quotes where a reader would otherwise
/// change it: with a comma, a quote, a line break, or blanks at its ends.
inline void addCsvField(std::string& line, std::string_view text, bool isFirst) {
  if (!isFirst) line += ',';
  const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
  const bool isPlain = text.find_first_of(",\"\r\n") == std::string_view::npos &&
                       (text.empty() || (!isBlank(text.front()) && !isBlank(text.back())));
  if (isPlain) {
    line += text;
    return;
  }
  line += '"';
  for (const char c : text) line.append(c == '"' ? 2 : 1, c);
  line += '"';
}
