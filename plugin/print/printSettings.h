#pragma once

#include <array>
#include <cstddef>

class TiniFile;

/// The fields that a report may show beside the record number, in the order of its columns.
enum class TprintField { controlNum, description, manufacturer, model, testProc, title, custom1, custom2, custom3 };

inline constexpr std::size_t printFieldCount = 9;

/// The user's choices in the print dialog: section `PRINT` of `EquipmentRecord.ini`.
struct TprintSettings {
  /// Which fields are printed, by `TprintField`. At first those that the grid shows at first.
  std::array<bool, printFieldCount> fields = {true, true, true, true, true, true, false, false, false};
  bool landscape = false;

  bool hasField() const;

  static TprintSettings load(const TiniFile& ini);
  void save(const TiniFile& ini) const;
};
