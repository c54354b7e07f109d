#pragma once

#include <string>
#include <vector>

class TiniFile;

/// The column that a grid is sorted by, and the direction.
struct TsortOrder {
  int column = 0;  ///< column index, possibly of a column that does not exist
  bool ascending = true;

  /// Handles a press on a heading: a new column sorts ascending, the same column changes direction.
  void press(int pressedColumn);
};

/// Column widths and sort order of a grid: section `GRID` for the record grid, `EDITGRID` for the editor's list.
struct TgridLayout {
  std::vector<int> widths;  ///< pixels, by column index
  TsortOrder sort;

  /// Reads the layout of a grid of at most `columnCount` columns that is `gridWidth` pixels wide.
  static TgridLayout load(const TiniFile& ini, const std::string& section, int gridWidth, int columnCount);

  /// Writes the widths of the first `columnCount` columns and the sort order.
  void save(const TiniFile& ini, const std::string& section, int columnCount) const;
};
