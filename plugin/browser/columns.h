#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct TbrowserSettings;

/// What a grid column shows: a text field by its field id (0 to 6), or one of the codes below.
using TcolumnId = std::uint16_t;

inline constexpr TcolumnId columnNumber = 997;    ///< "No.", the record's position counted from 1
inline constexpr TcolumnId columnTestProc = 998;  ///< the test procedure number
inline constexpr TcolumnId columnTitle = 999;     ///< the test procedure's title
inline constexpr TcolumnId columnNotFound = 1000;

/// Which columns the grid has, in which order, and how they are headed.
class TcolumnLayout {
 public:
  /// Rebuilds the columns, 3 to 10 of them, from the user's choices.
  void build(const TbrowserSettings& settings);

  int count() const { return static_cast<int>(ids_.size()); }
  /// What the column at `index` shows; `columnNotFound` where there is none.
  TcolumnId id(int index) const;
  /// The index of the column that shows `id`; -1 where there is none.
  int index(TcolumnId id) const;
  /// The heading (Windows-1252) of the column that shows `id`; "Unknown" for a code that is none.
  std::string header(TcolumnId id) const;

 private:
  std::vector<TcolumnId> ids_;
  std::vector<std::string> customNames_;
};
