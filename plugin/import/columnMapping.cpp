#include "import/columnMapping.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "support/iniFile.h"
#include "support/recordText.h"

namespace {

constexpr const char* section = "Import";

using Tnames = std::vector<std::string>;

/// What our dialogs, our export and other programs call a field, the surest name first.
struct TknownNames {
  std::size_t field;
  Tnames names;
};

const std::vector<TknownNames>& knownNames() {
  static const std::vector<TknownNames> known = {
      {fieldControlNum,
       {"deviceid", "controlnumber", "controlnun", "controlnum", "controlno", "equipmentid", "equipmentnumber",
        "equipmentno", "assetid", "assetnumber", "assetno", "assettag", "inventorynumber", "inventoryno", "tagnumber",
        "tag", "id"}},
      {fieldDescription,
       {"devicedescription", "description", "desc", "devicename", "equipmentname", "devicetype", "equipmenttype",
        "device", "name"}},
      {fieldManufacturer,
       {"devicemanufacturer", "manufacturer", "manufacturername", "make", "mfr", "mfg", "brand", "vendor"}},
      {fieldModel, {"devicemodel", "model", "modelnumber", "modelno", "modelname"}},
      {importTestProc,
       {"testprocedurenumber", "testprocedure", "testprocedurenum", "testprocedureno", "testproc", "procedurenumber",
        "procedure", "autosequence"}},
  };
  return known;
}

bool counts(char c) {
  const bool digit = c >= '0' && c <= '9';
  const bool letter = (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80;
  return digit || letter;
}

/// The part of a heading that counts when headings are compared.
std::string core(std::string_view heading) {
  std::string text = lowerCased(heading);
  std::erase_if(text, [](char c) { return !counts(c); });
  return text;
}

/// The names by which a field's heading is recognised. A field without known names has those of the table of fields;
/// a custom field is also called "custom field" and its number.
Tnames namesOf(std::size_t field) {
  for (const TknownNames& known : knownNames()) {
    if (known.field == field) return known.names;
  }
  const TtextField& unknown = textFields.at(field);
  Tnames names = {core(unknown.heading), core(unknown.exportName), core(unknown.importName)};
  if (unknown.customNumber > 0) names.push_back("customfield" + std::to_string(unknown.customNumber));
  return names;
}

/// The column of the first name that is a heading; 0 when none is. That heading is not found again.
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
    stored = stored || !ini.readString(section, importName(field), std::string()).empty();
    const int column = ini.readInteger(section, importName(field), 0);
    if (column > 0 && column <= columnCount) mapping.columns[field] = column;
  }
  return stored ? std::optional(mapping) : std::nullopt;
}

void TcolumnMapping::save(const TiniFile& ini) const {
  TiniFile::Tentries entries;
  for (std::size_t field = 0; field < importFieldCount; ++field) {
    entries.emplace_back(importName(field), std::to_string(columns[field]));
  }
  ini.write(section, entries);
}

TcolumnMapping TcolumnMapping::fromHeadings(const TfieldList& headings, const Tcaptions& captions) {
  std::vector<std::string> cores;
  for (const std::string_view heading : headings) cores.push_back(core(heading));
  TcolumnMapping mapping;
  for (const TtextField& field : textFields) {
    if (field.customNumber == 0) continue;
    const std::string caption = columnHeading(static_cast<TcolumnId>(field.id), captions);
    mapping.columns.at(static_cast<std::size_t>(field.id)) = takeColumn({core(caption)}, cores);
  }
  for (std::size_t field = 0; field < importFieldCount; ++field) {
    if (mapping.columns[field] == 0) mapping.columns[field] = takeColumn(namesOf(field), cores);
  }
  return mapping;
}
