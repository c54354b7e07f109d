#include "import/importOptions.h"

#include <string_view>

#include "support/iniFile.h"

namespace {

constexpr const char* optionsSection = "Import";
constexpr const char* knownKey = "KnownDevices";

}  // namespace

TimportChoices TimportChoices::load(const TiniFile& ini) {
  TimportChoices choices;
  choices.fileName = ini.readString(optionsSection, "Filename", choices.fileName);
  choices.delimiter = ini.readInteger(optionsSection, "Delimiter", choices.delimiter);
  choices.userDelimiter = ini.readString(optionsSection, "UserDelimiter", choices.userDelimiter);
  choices.startRow = ini.readInteger(optionsSection, "StartRow", choices.startRow);
  choices.quotes = ini.readFlag(optionsSection, "Quotes", choices.quotes);
  choices.spreadsheet = ini.readFlag(optionsSection, "Spreadsheet", choices.spreadsheet);
  choices.charset = ini.readInteger(optionsSection, "Charset", choices.charset);
  return choices;
}

void TimportChoices::save(const TiniFile& ini) const {
  ini.write(optionsSection, {{"Filename", fileName},
                             {"Delimiter", std::to_string(delimiter)},
                             {"UserDelimiter", userDelimiter},
                             {"StartRow", std::to_string(startRow)},
                             {"Quotes", quotes ? "1" : "0"},
                             {"Spreadsheet", spreadsheet ? "1" : "0"},
                             {"Charset", std::to_string(charset)}});
}

TknownChoice loadKnownChoice(const TiniFile& ini) {
  const int index = ini.readInteger(optionsSection, knownKey, 0);
  return index == 1 ? TknownChoice::skip : index == 2 ? TknownChoice::update : TknownChoice::ask;
}

void saveKnownChoice(const TiniFile& ini, TknownChoice choice) {
  ini.write(optionsSection, {{knownKey, std::to_string(static_cast<int>(choice))}});
}

Tcharset charsetOf(int index) {
  return static_cast<Tcharset>(index > 0 && index < charsetCount ? index : 0);
}

char delimiterCharacter(int index, const std::string& userDelimiter) {
  constexpr std::string_view fixed = ", \t|;";
  if (index >= 0 && index < otherDelimiter) return fixed[static_cast<std::size_t>(index)];
  return index == otherDelimiter && !userDelimiter.empty() ? userDelimiter.front() : ',';
}
