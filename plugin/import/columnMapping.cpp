#include "import/columnMapping.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "support/iniFile.h"
#include "support/recordText.h"

namespace {

constexpr const char* section = "Import";
constexpr std::array<const char*, importFieldCount> keys = {"DeviceID", "Desc",    "Make",    "Model",
                                                            "Custom1",  "Custom2", "Custom3", "TestProc"};

using Tnames = std::vector<std::string>;

/// What each field is called, the surest name first: in our dialogs and our export, then elsewhere.
const std::array<Tnames, importFieldCount>& fieldNames() {
  static const std::array<Tnames, importFieldCount> names = {{
      {"deviceid", "controlnumber", "controlnun", "controlnum", "controlno", "equipmentid", "equipmentnumber",
       "equipmentno", "assetid", "assetnumber", "assetno", "assettag", "inventorynumber", "inventoryno", "tagnumber",
       "tag", "id"},
      {"devicedescription", "description", "desc", "devicename", "equipmentname", "devicetype", "equipmenttype",
       "device", "name"},
      {"devicemanufacturer", "manufacturer", "manufacturername", "make", "mfr", "mfg", "brand", "vendor"},
      {"devicemodel", "model", "modelnumber", "modelno", "modelname"},
      {"custom1", "customfield1"},
      {"custom2", "customfield2"},
      {"custom3", "customfield3"},
      {"testprocedurenumber", "testprocedure", "testprocedurenum", "testprocedureno", "testproc", "procedurenumber",
       "procedure", "autosequence"},
  }};
  return names;
}

bool counts(char c) {
  const bool digit = c >= '0' && c <= '9';
  const bool letter = (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80;
  return digit || letter;
}

/// What counts of a heading when it is compared.
std::string core(std::string_view heading) {
  std::string text = lowerCased(heading);
  std::erase_if(text, [](char c) { return !counts(c); });
  return text;
}

/// The column of the first name that is a heading; 0 for none. The heading is used up.
int takeColumn(const Tnames& names, std::vector<std::string>& headings) {
  for (const std::string& name : names) {
    const auto found = std::find(headings.begin() + 1, headings.end(), name);
    if (name.empty() || found == headings.end()) continue;
    found->clear();
    return static_cast<int>(found - headings.begin());
  }
  return 0;
}

}  // namespace

std::optional<TcolumnMapping> TcolumnMapping::load(const TiniFile& ini, int columnCount) {
  TcolumnMapping mapping;
  bool stored = false;
  for (std::size_t field = 0; field < importFieldCount; ++field) {
    stored = stored || !ini.readString(section, keys[field], std::string()).empty();
    const int column = ini.readInteger(section, keys[field], 0);
    if (column > 0 && column <= columnCount) mapping.columns[field] = column;
  }
  return stored ? std::optional(mapping) : std::nullopt;
}

void TcolumnMapping::save(const TiniFile& ini) const {
  TiniFile::Tentries entries;
  for (std::size_t field = 0; field < importFieldCount; ++field) {
    entries.emplace_back(keys[field], std::to_string(columns[field]));
  }
  ini.write(section, entries);
}

TcolumnMapping TcolumnMapping::fromHeadings(const TfieldList& headings, const std::array<std::string, 3>& captions) {
  std::vector<std::string> cores;
  for (const std::string_view heading : headings) cores.push_back(core(heading));
  TcolumnMapping mapping;
  for (std::size_t i = 0; i < captions.size(); ++i) {
    mapping.columns[fieldCustom1 + i] = takeColumn({core(captions[i])}, cores);
  }
  for (std::size_t field = 0; field < importFieldCount; ++field) {
    if (mapping.columns[field] == 0) mapping.columns[field] = takeColumn(fieldNames()[field], cores);
  }
  return mapping;
}
