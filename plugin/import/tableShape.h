#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "store/columns.h"

/// How the fields of a text are quoted.
enum class Tquoting : std::uint8_t {
  none,
  spreadsheet,  ///< as spreadsheets write quotes, or with line ends that only they read
  allFields     ///< every field in quotes, with blanks between quote and delimiter
};

/// The table that a text seems to hold.
///
/// Each delimiter is tried. The one counts that gives many columns, as many in nearly every row, and best of all known
/// headings and fields in quotes; the comma, which texts hold most often, comes last among equals. A blank is tried
/// only if no other fits.
struct TtableShape {
  char delimiter = ',';
  std::size_t columns = 1;  ///< of most rows
  Tquoting quoting = Tquoting::none;

  /// `text` is Windows-1252 and holds whole lines.
  static TtableShape of(std::string_view text, const Tcaptions& captions);
};
