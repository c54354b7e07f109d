#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "import/charset.h"
#include "store/columns.h"

struct TimportChoices;

/// What a file to import seems to be.
struct TimportSuggestion {
  int delimiter = 0;  ///< index in the list of delimiters
  std::string userDelimiter;
  bool quotes = false;
  bool spreadsheet = false;
  Tcharset charset = Tcharset::automatic;  ///< automatic where there is nothing but ASCII
  int startRow = 1;
  bool hasHeadings = false;  ///< in the row before the start row

  /// Looks at the start of a file: its first 64 KB, or all of a shorter one. Nothing when it does not seem to be a
  /// table.
  static std::optional<TimportSuggestion> of(std::string_view start, const Tcaptions& captions);

  /// "Semi-Colon, quotes as spreadsheets write them, UTF-8, headings in row 1"
  std::string text() const;

  /// Whether the file is read in this way already. Automatic is any character set; and where no headings were found,
  /// any start row will do.
  bool isSetIn(const TimportChoices& choices) const;

  /// Sets everything but the name of the file. An automatic character set stays, which is right for the next file, too.
  void setIn(TimportChoices& choices) const;
};
