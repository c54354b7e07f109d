#pragma once

#include <functional>
#include <string>
#include <vector>

/// The two sides of a comparison. Each call measures once and returns the result in the unit of the row.
struct Tsides {
  std::function<double()> ours;
  std::function<double()> yardstick;
};

/// One comparison: our median divided by the yardstick's median must not exceed the bound.
struct Trow {
  std::string name;
  std::string unit;
  double bound;
  int runs;  ///< of each side
  /// Prepares what is not measured. Throws `std::runtime_error` if the two sides do not do the same work.
  std::function<Tsides()> prepare;
};

/// Milliseconds that `work` takes.
double millisecondsOf(const std::function<void()>& work);

/// Throws `std::runtime_error` unless a condition holds that a measurement relies on.
void require(bool holds, const std::string& what);

/// Measures each row, its sides in turn, and prints it, then a summary. Returns whether every row could be measured and
/// is within its bound.
bool measureRows(const std::vector<Trow>& rows);
