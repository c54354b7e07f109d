#pragma once

#include <array>
#include <string>

#include "store/columns.h"

class TiniFile;

/// The file that the user exported to last, under a name of his own (Windows-1252): section `EXPORT`. Empty at first.
std::string lastExportFile(const TiniFile& ini);
void saveLastExportFile(const TiniFile& ini, const std::string& name);

/// Whether the user wants to be asked before deleting: section `PROMPTS`. Read, but the question is always asked.
struct TpromptFlags {
  bool deleteSingle = true;
  bool deleteMultiple = true;
};

/// The user's choices in `EquipmentRecord.ini` that decide what the browser shows.
struct TbrowserSettings {
  /// Which of `allColumns` the grid shows: section `DISPLAY`, but for the columns that are always shown.
  std::array<bool, allColumns.size()> shown = shownAtFirst();
  TpromptFlags prompts;
  Tcaptions captions = defaultCaptions();

  static TbrowserSettings load(const TiniFile& ini);
  /// Writes what the options dialog offers: the columns and the captions.
  void saveOptions(const TiniFile& ini) const;

 private:
  static std::array<bool, allColumns.size()> shownAtFirst();
};
