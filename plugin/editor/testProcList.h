#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class TtestProcTable;
struct TsortOrder;

/// The ordered list of test procedure numbers that the editor offers. The titles (Windows-1252) stay the browser's. A
/// procedure titled "(UNUSED)" is never offered.
class TtestProcList {
 public:
  static constexpr int numberColumn = 0;
  static constexpr int titleColumn = 1;
  static constexpr int columnCount = 2;

  explicit TtestProcList(const TtestProcTable& titles) : titles_(titles) {}

  std::size_t count() const { return numbers_.size(); }
  /// The number at a row, counted from 0.
  unsigned at(std::size_t row) const { return numbers_[row]; }
  /// The row of a number; nothing where it is not in the list.
  std::optional<std::size_t> rowOf(unsigned number) const;
  std::string_view titleAt(std::size_t row) const;

  /// Lists all procedures by number.
  void showAll();
  /// Lists, by number, those whose title contains the text; case, and blanks around either, do not count.
  void search(std::string_view text);
  void showNone() { numbers_.clear(); }

  /// Sorts by number or byte by byte by title, each stable; descending is the ascending result reversed, ties included.
  /// A column that is not there becomes column 0; the direction stays.
  void sort(TsortOrder& order);

  /// "NUMBER - TITLE"; the title is trimmed where the procedure is not in the list.
  std::string caption(unsigned number) const;

 private:
  const TtestProcTable& titles_;
  std::vector<unsigned> numbers_;
};
