#include "comm/selector/connectionSettings.h"

#include <algorithm>

#include "support/iniFile.h"

namespace {

constexpr const char* section = "COMM";

TcommMethod toMethod(int number) {
  const TcommMethodEntry entry = commMethodBy(&TcommMethodEntry::settingsNumber, number);
  return entry.mode == TcommMode::none ? TcommMethod::usb : entry.method;
}

bool fitsBox(const std::string& text) {
  return text.size() <= 3 && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string octetKey(std::size_t octet) {
  return "IP" + std::to_string(octet + 1);
}

}  // namespace

TconnectionSettings TconnectionSettings::load(const TiniFile& ini) {
  TconnectionSettings settings;
  settings.method = toMethod(ini.readInteger(section, "DEFAULTCOMMMETHOD", 1));
  settings.serialPort = ini.readInteger(section, "DEFAULTSERIAL", settings.serialPort);
  for (std::size_t i = 0; i < settings.octets.size(); ++i) {
    std::string& octet = settings.octets.at(i);
    octet = ini.readString(section, octetKey(i), octet);
    if (!fitsBox(octet)) octet.clear();
  }
  return settings;
}

void TconnectionSettings::save(const TiniFile& ini) const {
  const int number = commMethodBy(&TcommMethodEntry::method, method).settingsNumber;
  TiniFile::Tentries entries = {{"DEFAULTCOMMMETHOD", std::to_string(number)}};
  if (method == TcommMethod::ethernet) {
    for (std::size_t i = 0; i < octets.size(); ++i) entries.emplace_back(octetKey(i), octets.at(i));
  }
  if (method == TcommMethod::serial && serialPort > 0)
    entries.emplace_back("DEFAULTSERIAL", std::to_string(serialPort));
  ini.write(section, entries);
}
