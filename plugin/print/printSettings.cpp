#include "print/printSettings.h"

#include <algorithm>

#include "support/iniFile.h"

namespace {

constexpr const char* section = "PRINT";
constexpr const char* landscapeKey = "LANDSCAPE";
constexpr std::array<const char*, printFieldCount> fieldKeys = {
    "CONTROLNUM", "DESCRIPTION", "MANUFACTURER", "MODEL", "TESTPROC", "TITLE", "CUSTOM1", "CUSTOM2", "CUSTOM3"};

std::string flagText(bool flag) {
  return flag ? "1" : "0";
}

}  // namespace

bool TprintSettings::hasField() const {
  return std::any_of(fields.begin(), fields.end(), [](bool printed) { return printed; });
}

TprintSettings TprintSettings::load(const TiniFile& ini) {
  TprintSettings settings;
  for (std::size_t i = 0; i < printFieldCount; ++i) {
    settings.fields[i] = ini.readFlag(section, fieldKeys[i], settings.fields[i]);
  }
  settings.landscape = ini.readFlag(section, landscapeKey, settings.landscape);
  return settings;
}

void TprintSettings::save(const TiniFile& ini) const {
  TiniFile::Tentries entries;
  for (std::size_t i = 0; i < printFieldCount; ++i) entries.emplace_back(fieldKeys[i], flagText(fields[i]));
  entries.emplace_back(landscapeKey, flagText(landscape));
  ini.write(section, entries);
}
