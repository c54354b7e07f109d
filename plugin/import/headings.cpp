#include "import/headings.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <sstream>
#include <string_view>
#include <vector>

#include "support/recordText.h"

namespace {

using Tnames = std::vector<std::string>;

/// What our dialogs, our export and other programs call a field, the surest name first.
struct TknownNames {
  std::size_t field;
  const char* names;  ///< each followed by a blank
};

constexpr auto knownNames = std::to_array<TknownNames>({
    {fieldControlNum,
     "deviceid controlnumber controlnun controlnum controlno equipmentid equipmentnumber equipmentno geraeteid "
     "geraetenummer geraetenr assetid assetnumber assetno assettag inventorynumber inventoryno inventarnummer "
     "inventarnr invnr equipmentnummer equipmentnr anlagennummer anlagennr kontrollnummer kontrollnr tagnumber "
     "tag id "},
    {fieldDescription,
     "devicedescription geraetebezeichnung geraetebeschreibung description bezeichnung beschreibung desc "
     "devicename equipmentname geraetename devicetype equipmenttype geraeteart device geraet benennung name "},
    {fieldManufacturer,
     "devicemanufacturer manufacturer manufacturername geraetehersteller hersteller herstellername make mfr mfg "
     "brand vendor fabrikat marke "},
    {fieldModel,
     "devicemodel model modelnumber modelno modelname modell modellnummer modellnr modellbezeichnung typ "
     "typbezeichnung typenbezeichnung geraetetyp "},
    {importTestProc,
     "testprocedurenumber testprocedure testprocedurenum testprocedureno testproc procedurenumber procedureno "
     "procedure "
     "autosequence pruefablaufnummer pruefablaufnr pruefablauf pruefprozedurnummer pruefprozedurnr "
     "pruefprozedur testprozedurnummer testprozedurnr testprozedur testablaufnummer testablaufnr testablauf "},
});

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool counts(char c) {
  return isDigit(c) || (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80;
}

/// What counts of a small letter, digit or other character.
std::string coreOf(char c) {
  switch (c) {
    case '\xE4':
      return "ae";
    case '\xF6':
      return "oe";
    case '\xFC':
      return "ue";
    case '\xDF':
      return "ss";
    default:
      return counts(c) ? std::string(1, c) : std::string();
  }
}

/// The part of a heading that counts when headings are compared.
std::string core(std::string_view heading) {
  std::string text;
  for (const char c : lowerCased(heading)) text += coreOf(c);
  return text;
}

bool isCustom(std::size_t field) {
  return field != importTestProc && textFields.at(field).customNumber > 0;
}

/// The names by which a field's heading is recognised. A field without known names has those of the table of fields;
/// a custom field is also called "custom field" and its number.
Tnames namesOf(std::size_t field) {
  for (const TknownNames& known : knownNames) {
    if (known.field != field) continue;
    std::istringstream names(known.names);
    return {std::istream_iterator<std::string>(names), {}};
  }
  const TtextField& unknown = textFields.at(field);
  Tnames names = {core(unknown.heading), core(unknown.exportName), core(unknown.importName)};
  if (unknown.customNumber > 0) names.push_back("customfield" + std::to_string(unknown.customNumber));
  return names;
}

std::string captionCore(std::size_t field, const Tcaptions& captions) {
  return core(captionOf(textFields.at(field), captions));
}

/// Whether a custom field's caption means that field and nothing else in a file of ours.
bool isClear(std::size_t field, const Tcaptions& captions) {
  const std::string caption = captionCore(field, captions);
  if (caption.empty()) return false;
  const auto means = [&](std::size_t other) {
    const Tnames names = namesOf(other);
    if (std::find(names.begin(), names.end(), caption) != names.end()) return true;
    return isCustom(other) && captionCore(other, captions) == caption;
  };
  for (std::size_t other = 0; other < importFieldCount; ++other) {
    if (other != field && means(other)) return false;
  }
  return std::none_of(allColumns.begin(), allColumns.end(), [&](const Tcolumn& column) {
    return column.id >= columnNumber && (core(column.heading) == caption || core(column.exportName) == caption);
  });
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

TfieldColumns columnsByHeadings(const TfieldList& headings, const Tcaptions& captions) {
  std::vector<std::string> cores(std::max<std::size_t>(headings.size(), 1));
  std::transform(headings.begin(), headings.end(), cores.begin(), core);
  TfieldColumns columns{};
  for (std::size_t field = 0; field < importTestProc; ++field) {
    if (!isCustom(field)) continue;
    Tnames names = {captionCore(field, captions)};
    if (!isClear(field, captions)) names.insert(names.begin(), core(textFields.at(field).heading));
    columns.at(field) = takeColumn(names, cores);
  }
  for (std::size_t field = 0; field < importFieldCount; ++field) {
    if (columns.at(field) == 0) columns.at(field) = takeColumn(namesOf(field), cores);
  }
  return columns;
}

bool namesDeviceId(const TfieldList& row, const Tcaptions& captions) {
  return columnsByHeadings(row, captions)[fieldControlNum] > 0;
}

bool looksLikeHeadings(const TfieldList& row, const Tcaptions& captions) {
  const TfieldColumns columns = columnsByHeadings(row, captions);
  if (columns[fieldControlNum] == 0) return false;
  if (std::count_if(columns.begin(), columns.end(), [](int column) { return column > 0; }) > 1) return true;
  return std::all_of(row.begin() + 1, row.end(), [](std::string_view cell) {
    return !trimmedText(cell).empty() && std::none_of(cell.begin(), cell.end(), isDigit);
  });
}

const TfieldList& headingRow(const TfieldList& before, const TfieldList& first, const Tcaptions& captions) {
  return !namesDeviceId(before, captions) && namesDeviceId(first, captions) ? first : before;
}

std::string writtenHeading(std::size_t field, const Tcaptions& captions) {
  if (field == importTestProc) return columnHeading(columnTestProc, captions);
  const bool plain = isCustom(field) && !isClear(field, captions);
  return plain ? textFields.at(field).heading : columnHeading(static_cast<TcolumnId>(field), captions);
}
