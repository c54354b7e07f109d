#pragma once

#include <array>
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
  /// Writes what the options dialog offers: the display flags and the captions.
  void saveOptions(const TiniFile& ini) const;
};
