#pragma once

#include <QString>
#include <cstddef>

/// Where the user stands in the list.
struct Tstatus {
  std::size_t total = 0;     ///< records in the list
  std::size_t shown = 0;     ///< of these in the grid
  bool isSearching = false;  ///< a search decides which ones are shown
  std::size_t selected = 0;  ///< rows
  QString event = {};        ///< the last thing that happened; empty for none
};

/// "1 record", "240 records".
QString recordCountText(std::size_t count);

/// The status line: "51 of 240 records match · 3 selected · 12 records deleted".
QString statusText(const Tstatus& status);

/// The link at the end of the status line: "12 records need attention"; empty for none.
QString attentionText(std::size_t count);

/// What is said before an upload about the records that the analyzer cannot tell apart; empty for none.
QString uploadWarning(std::size_t count, std::size_t total);

/// What stands in the middle of a grid without a record; empty for a grid with one.
QString emptyGridText(const Tstatus& status);
