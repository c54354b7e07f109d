#pragma once

#include <functional>
#include <string>
#include <vector>

/// The two sides of a comparison. Each call measures once and returns what it measured, in the unit of the row.
struct Tsides {
  std::function<double()> ours;
  std::function<double()> yardstick;
};

/// One comparison: the median of ours over the median of the yardstick must not exceed the bound.
struct Trow {
  std::string name;
  std::string unit;
  double bound;
  int runs;  ///< of each side
  /// Makes ready what is not measured. Throws `std::runtime_error` where the two sides turn out not to do the same
  /// work.
  std::function<Tsides()> prepare;
};

/// Milliseconds that `work` takes.
double millisecondsOf(const std::function<void()>& work);

/// Throws `std::runtime_error` where something that a measurement relies on does not hold.
void require(bool holds, const std::string& what);

/// Measures each row, its sides in turn, and prints it; then a line that sums up. Returns whether every row could be
/// measured and is within its bound.
bool measureRows(const std::vector<Trow>& rows);
