#include "browser/settings.h"

#include "support/iniFile.h"

namespace {

constexpr const char* displaySection = "DISPLAY";
constexpr const char* promptSection = "PROMPTS";

constexpr const char* exportSection = "EXPORT";
constexpr const char* exportKey = "FILENAME";

}  // namespace

std::string lastExportFile(const TiniFile& ini) {
  return ini.readString(exportSection, exportKey, {});
}

void saveLastExportFile(const TiniFile& ini, const std::string& name) {
  ini.write(exportSection, {{exportKey, name}});
}

std::array<bool, allColumns.size()> TbrowserSettings::shownAtFirst() {
  std::array<bool, allColumns.size()> shown{};
  for (std::size_t i = 0; i < shown.size(); ++i) shown[i] = allColumns[i].shown != Tshown::onDemand;
  return shown;
}

TbrowserSettings TbrowserSettings::load(const TiniFile& ini) {
  TbrowserSettings settings;
  for (std::size_t i = 0; i < allColumns.size(); ++i) {
    bool& shown = settings.shown[i];
    if (allColumns[i].shown != Tshown::always) shown = ini.readFlag(displaySection, allColumns[i].settingsKey(), shown);
  }
  TpromptFlags& prompts = settings.prompts;
  prompts.deleteSingle = ini.readFlag(promptSection, "DELETESINGLE", prompts.deleteSingle);
  prompts.deleteMultiple = ini.readFlag(promptSection, "DELETEMULTIPLE", prompts.deleteMultiple);
  settings.captions = loadCaptions(ini);
  return settings;
}

void TbrowserSettings::saveOptions(const TiniFile& ini) const {
  TiniFile::Tentries entries;
  for (std::size_t i = 0; i < allColumns.size(); ++i) {
    if (allColumns[i].shown != Tshown::always) entries.emplace_back(allColumns[i].settingsKey(), shown[i] ? "1" : "0");
  }
  ini.write(displaySection, entries);
  saveCaptions(ini, captions);
}
