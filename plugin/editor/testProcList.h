#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class TtestProcTable;
struct TsortOrder;

/// The ordered list of test procedure numbers that the editor offers. The titles (Windows-1252) belong to the browser.
/// The list never contains a procedure titled "(UNUSED)".
class TtestProcList {
 public:
  static constexpr int numberColumn = 0;
  static constexpr int titleColumn = 1;
  static constexpr int columnCount = 2;

  explicit TtestProcList(const TtestProcTable& titles) : titles_(titles) {}

  std::size_t count() const { return numbers_.size(); }
  /// The number at a row, counted from 0.
  unsigned at(std::size_t row) const { return numbers_[row]; }
  /// The row of a number; nothing when the list lacks it.
  std::optional<std::size_t> rowOf(unsigned number) const;
  std::string_view titleAt(std::size_t row) const;
  /// Why the list is empty, for the user; empty itself if it is not.
  std::string_view emptyText() const;

  /// Lists all procedures by number.
  void showAll();
  /// Lists, by number, the procedures whose title contains the text. Case and surrounding blanks do not count.
  void search(std::string_view text);
  void showNone() { numbers_.clear(); }

  /// Stable sort by number, or by title byte by byte. Descending order is the ascending order reversed, ties included.
  /// A column that does not exist becomes column 0; the direction stays.
  void sort(TsortOrder& order);

  /// "NUMBER - TITLE". The title is trimmed when the procedure is not in the list.
  std::string caption(unsigned number) const;

 private:
  const TtestProcTable& titles_;
  std::vector<unsigned> numbers_;
};
