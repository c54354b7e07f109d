#pragma once

#include <vector>

/// The width that a column needs for its texts.
struct TcolumnNeed {
  int least;   ///< narrower columns break words
  int usual;   ///< enough for nearly all texts
  int most;    ///< enough for all texts
  bool fixed;  ///< all three are equal, and the column gets exactly this width
};

/// Divides a width among columns. If it is large enough, each column gets its `most` and a share of the rest. Otherwise
/// the widest columns shrink first: to `usual`, then to `least`, then further. Fixed columns get exactly their width
/// and shrink only if they alone do not fit.
std::vector<int> shareWidth(const std::vector<TcolumnNeed>& needs, int available);
