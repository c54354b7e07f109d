#pragma once

#include <array>
#include <cstddef>
#include <string>

class TiniFile;

/// Which optional columns the grid shows: section `DISPLAY`.
struct TdisplayFlags {
  bool description = true;
  bool manufacturer = true;
  bool model = true;
  bool title = true;
  std::array<bool, 3> custom = {false, false, false};
};

/// Whether confirmations are wanted before deleting: section `PROMPTS`. They are read, but the question is always
/// asked.
struct TpromptFlags {
  bool deleteSingle = true;
  bool deleteMultiple = true;
};

/// The user's choices in `EquipmentRecord.ini` that decide what the browser shows.
struct TbrowserSettings {
  TdisplayFlags display;
  TpromptFlags prompts;
  /// Captions of the custom fields (Windows-1252, possibly empty): section `CUSTOMFIELDS`.
  std::array<std::string, 3> customNames = {"Custom 1", "Custom 2", "Custom 3"};

  static TbrowserSettings load(const TiniFile& ini);
};

/// Column widths and sort order of a grid: section `GRID` for the record grid.
struct TgridLayout {
  static constexpr std::size_t mostColumns = 10;

  std::array<int, mostColumns> widths{};  ///< pixels, by column index
  int sortColumn = 0;                     ///< column index; may be one that is not there
  bool sortAscending = true;

  /// Reads the layout of a grid of `columnCount` columns (at most `mostColumns`) that is `gridWidth` pixels wide.
  static TgridLayout load(const TiniFile& ini, const std::string& section, int gridWidth, int columnCount);

  /// Writes the widths of the first `columnCount` columns and the sort order.
  void save(const TiniFile& ini, const std::string& section, int columnCount) const;
};
