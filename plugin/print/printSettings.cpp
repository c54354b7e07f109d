#include "print/printSettings.h"

#include <algorithm>

#include "support/iniFile.h"

namespace {

constexpr const char* section = "PRINT";
constexpr const char* landscapeKey = "LANDSCAPE";
constexpr const char* paperSizeKey = "PAPER";
constexpr const char* pdfFolderKey = "PDFFOLDER";

std::string flagText(bool flag) {
  return flag ? "1" : "0";
}

}  // namespace

std::array<bool, printColumnCount> TprintSettings::printedAtFirst() {
  std::array<bool, printColumnCount> printed{};
  for (std::size_t i = 0; i < printColumnCount; ++i) printed[i] = printColumns[i].shown != Tshown::onDemand;
  return printed;
}

bool TprintSettings::printsAny() const {
  return std::find(printed.begin(), printed.end(), true) != printed.end();
}

TprintSettings TprintSettings::load(const TiniFile& ini) {
  TprintSettings settings;
  for (std::size_t i = 0; i < printColumnCount; ++i) {
    settings.printed[i] = ini.readFlag(section, printColumns[i].settingsKey(), settings.printed[i]);
  }
  settings.landscape = ini.readFlag(section, landscapeKey, settings.landscape);
  settings.paper = ini.readString(section, paperSizeKey, {});
  settings.pdfFolder = ini.readString(section, pdfFolderKey, {});
  return settings;
}

void TprintSettings::save(const TiniFile& ini) const {
  TiniFile::Tentries entries;
  for (std::size_t i = 0; i < printColumnCount; ++i) {
    entries.emplace_back(printColumns[i].settingsKey(), flagText(printed[i]));
  }
  entries.emplace_back(landscapeKey, flagText(landscape));
  entries.emplace_back(paperSizeKey, paper);
  entries.emplace_back(pdfFolderKey, pdfFolder);
  ini.write(section, entries);
}
