#include "store/columns.h"

#include <algorithm>

#include "support/iniFile.h"
#include "support/recordText.h"

namespace {

constexpr const char* captionSection = "CUSTOMFIELDS";

std::string captionKey(const TtextField& field) {
  return "FIELD" + std::to_string(field.customNumber) + "NAME";
}

/// Calls `visit` with each custom field and its caption.
template <typename Captions, typename Visit>
void forEachCaption(Captions& captions, Visit visit) {
  for (const TtextField& field : textFields) {
    if (field.customNumber > 0) visit(field, captionOf(field, captions));
  }
}

}  // namespace

std::string Tcolumn::settingsKey() const {
  std::string key = name;
  std::transform(key.begin(), key.end(), key.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; });
  return key;
}

Tcaptions defaultCaptions() {
  Tcaptions captions;
  forEachCaption(captions, [](const TtextField& field, std::string& caption) { caption = field.heading; });
  return captions;
}

Tcaptions loadCaptions(const TiniFile& ini) {
  Tcaptions captions;
  forEachCaption(captions, [&](const TtextField& field, std::string& caption) {
    caption = ini.readString(captionSection, captionKey(field), field.heading);
  });
  return captions;
}

void saveCaptions(const TiniFile& ini, const Tcaptions& captions) {
  TiniFile::Tentries entries;
  forEachCaption(captions, [&](const TtextField& field, const std::string& caption) {
    entries.emplace_back(captionKey(field), caption);
  });
  ini.write(captionSection, entries);
}

std::string columnHeading(TcolumnId column, const Tcaptions& captions) {
  if (column < fieldCount && textField(column).customNumber > 0) return captionOf(textField(column), captions);
  for (const Tcolumn& known : allColumns) {
    if (known.id == column) return known.heading;
  }
  return "Unknown";
}

std::string columnText(TcolumnId column, const TrecordView& shown) {
  if (column < fieldCount) return std::string(trimmedText(shown.record.text(column)));
  switch (column) {
    case columnNumber:
      return std::to_string(shown.index + 1);
    case columnTestProc:
      return std::to_string(shown.record.testProc());
    case columnTitle:
      return std::string(trimmedText(shown.title));
    default:
      return "INVALID DATA";
  }
}

std::string exportText(TcolumnId column, const TrecordView& shown) {
  if (column < fieldCount) return shown.record.text(column);
  if (column == columnTitle) return std::string(shown.title);
  return column == columnNumber ? std::to_string(shown.index) : columnText(column, shown);
}
