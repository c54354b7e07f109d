#include "browser/settings.h"

#include "support/iniFile.h"

namespace {

std::string widthKey(int column) {
  return "COL_" + std::to_string(column) + "_WIDTH";
}

std::string flagText(bool flag) {
  return flag ? "1" : "0";
}

}  // namespace

TbrowserSettings TbrowserSettings::load(const TiniFile& ini) {
  TbrowserSettings settings;
  TdisplayFlags& display = settings.display;
  display.description = ini.readFlag("DISPLAY", "DESCRIPTION", display.description);
  display.manufacturer = ini.readFlag("DISPLAY", "MANUFACTURER", display.manufacturer);
  display.model = ini.readFlag("DISPLAY", "MODEL", display.model);
  display.title = ini.readFlag("DISPLAY", "TITLE", display.title);
  settings.prompts.deleteSingle = ini.readFlag("PROMPTS", "DELETESINGLE", settings.prompts.deleteSingle);
  settings.prompts.deleteMultiple = ini.readFlag("PROMPTS", "DELETEMULTIPLE", settings.prompts.deleteMultiple);
  for (std::size_t i = 0; i < settings.customNames.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    display.custom[i] = ini.readFlag("DISPLAY", "CUSTOM" + number, display.custom[i]);
    settings.customNames[i] = ini.readString("CUSTOMFIELDS", "FIELD" + number + "NAME", settings.customNames[i]);
  }
  return settings;
}

TgridLayout TgridLayout::load(const TiniFile& ini, const std::string& section, int gridWidth, int columnCount) {
  TgridLayout layout;
  const int defaultWidth = gridWidth / (columnCount + 1);
  for (int column = 0; column < columnCount; ++column) {
    layout.widths.at(static_cast<std::size_t>(column)) = ini.readInteger(section, widthKey(column), defaultWidth);
  }
  layout.sortAscending = ini.readFlag(section, "SORTASC", true);
  layout.sortColumn = ini.readInteger(section, "SORTCOL", 0);
  if (layout.sortColumn > columnCount) {  // the count itself passes, and is then a column that is not there
    layout.sortColumn = 0;
    layout.sortAscending = true;
  }
  return layout;
}

void TgridLayout::save(const TiniFile& ini, const std::string& section, int columnCount) const {
  TiniFile::Tentries entries;
  for (int column = 0; column < columnCount; ++column) {
    entries.emplace_back(widthKey(column), std::to_string(widths.at(static_cast<std::size_t>(column))));
  }
  entries.emplace_back("SORTCOL", std::to_string(sortColumn));
  entries.emplace_back("SORTASC", flagText(sortAscending));
  ini.write(section, entries);
}
