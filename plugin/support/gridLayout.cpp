#include "support/gridLayout.h"

#include "support/iniFile.h"

namespace {

std::string widthKey(int column) {
  return "COL_" + std::to_string(column) + "_WIDTH";
}

}  // namespace

void TsortOrder::press(int pressedColumn) {
  ascending = pressedColumn != column || !ascending;
  column = pressedColumn;
}

TgridLayout TgridLayout::load(const TiniFile& ini, const std::string& section, int gridWidth, int columnCount) {
  TgridLayout layout;
  const int defaultWidth = gridWidth / (columnCount + 1);
  for (int column = 0; column < columnCount; ++column) {
    layout.widths.push_back(ini.readInteger(section, widthKey(column), defaultWidth));
  }
  layout.sort.ascending = ini.readFlag(section, "SORTASC", true);
  layout.sort.column = ini.readInteger(section, "SORTCOL", 0);
  if (layout.sort.column > columnCount) {  // a column equal to the count passes, although no such column exists
    layout.sort.column = 0;
    layout.sort.ascending = true;
  }
  return layout;
}

void TgridLayout::save(const TiniFile& ini, const std::string& section, int columnCount) const {
  TiniFile::Tentries entries;
  for (int column = 0; column < columnCount; ++column) {
    entries.emplace_back(widthKey(column), std::to_string(widths.at(static_cast<std::size_t>(column))));
  }
  entries.emplace_back("SORTCOL", std::to_string(sort.column));
  entries.emplace_back("SORTASC", sort.ascending ? "1" : "0");
  ini.write(section, entries);
}
