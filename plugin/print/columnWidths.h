#pragma once

#include <vector>

/// What a column would need of a page's width for its texts.
struct TcolumnNeed {
  int least;   ///< below this words are broken
  int usual;   ///< enough for nearly all texts
  int most;    ///< enough for all texts
  bool fixed;  ///< all three are the same, and it shall have just that
};

/// Shares a width among columns. Where there is enough, each has what it needs at most and a share of the rest; where
/// there is less, the widest columns come down first: to what they need usually, then at least, then below that. Fixed
/// columns have just what they need; only where not even they all fit do they shrink.
std::vector<int> shareWidth(const std::vector<TcolumnNeed>& needs, int available);
