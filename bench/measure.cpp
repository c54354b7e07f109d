#include "bench/measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <utility>

namespace {

struct Tmedians {
  double ours;
  double yardstick;
};

double median(std::vector<double> values) {
  const std::size_t upper = values.size() / 2;
  std::sort(values.begin(), values.end());
  return values.size() % 2 == 1 ? values[upper] : (values[upper - 1] + values[upper]) / 2;
}

/// Runs both sides in turn, so that other load on the machine hits both, and alternates which one goes first. The first
/// run of each warms up and is not counted.
Tmedians measure(const Tsides& sides, int runs) {
  std::vector<double> ours;
  std::vector<double> yardstick;
  sides.ours();
  sides.yardstick();
  for (int run = 0; run < runs; ++run) {
    if (run % 2 == 0) ours.push_back(sides.ours());
    yardstick.push_back(sides.yardstick());
    if (run % 2 == 1) ours.push_back(sides.ours());
  }
  return {median(std::move(ours)), median(std::move(yardstick))};
}

void printHeading() {
  std::printf("%-32s %12s %12s  %-6s %8s %8s\n", "row", "ours", "yardstick", "unit", "ratio", "bound");
}

/// Measures and prints one row. Returns whether it is within its bound.
bool measureRow(const Trow& row) {
  const Tmedians medians = measure(row.prepare(), row.runs);
  const double ratio = medians.ours / medians.yardstick;
  const bool within = ratio <= row.bound;  // also false if the ratio is not a number
  std::printf("%-32s %12.4g %12.4g  %-6s %8.3f %8.3f%s\n", row.name.c_str(), medians.ours, medians.yardstick,
              row.unit.c_str(), ratio, row.bound, within ? "" : "  BEYOND");
  return within;
}

bool measureRowOrTell(const Trow& row) {
  try {
    return measureRow(row);
  } catch (const std::exception& exception) {
    std::printf("%-32s could not be measured: %s\n", row.name.c_str(), exception.what());
    return false;
  }
}

}  // namespace

double millisecondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void require(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error(what);
}

bool measureRows(const std::vector<Trow>& rows) {
  std::string failed;
  printHeading();
  for (const Trow& row : rows) {
    if (!measureRowOrTell(row)) failed += " " + row.name;
    std::fflush(stdout);
  }
  const std::string verdict = failed.empty() ? "all within their bounds" : "not within their bounds:" + failed;
  std::printf("%zu rows measured, %s\n", rows.size(), verdict.c_str());
  return failed.empty();
}
