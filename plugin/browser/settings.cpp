#include "browser/settings.h"

#include "support/iniFile.h"

namespace {

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

void TbrowserSettings::saveOptions(const TiniFile& ini) const {
  ini.write("DISPLAY", {{"DESCRIPTION", flagText(display.description)},
                        {"MANUFACTURER", flagText(display.manufacturer)},
                        {"MODEL", flagText(display.model)},
                        {"TITLE", flagText(display.title)},
                        {"CUSTOM1", flagText(display.custom[0])},
                        {"CUSTOM2", flagText(display.custom[1])},
                        {"CUSTOM3", flagText(display.custom[2])}});
  ini.write("CUSTOMFIELDS",
            {{"FIELD1NAME", customNames[0]}, {"FIELD2NAME", customNames[1]}, {"FIELD3NAME", customNames[2]}});
}
