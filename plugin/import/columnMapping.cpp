#include "import/columnMapping.h"

#include <algorithm>
#include <string>

#include "import/headings.h"
#include "support/iniFile.h"

namespace {

constexpr const char* section = "Import";

bool contradict(const TfieldColumns& stored, const TfieldColumns& named) {
  for (std::size_t field = 0; field < stored.size(); ++field) {
    if (stored.at(field) > 0 && named.at(field) > 0 && stored.at(field) != named.at(field)) return true;
  }
  return false;
}

}  // namespace

std::optional<TcolumnMapping> TcolumnMapping::load(const TiniFile& ini, int columnCount) {
  TcolumnMapping mapping;
  for (std::size_t field = 0; field < importFieldCount; ++field) {
    const int column = ini.readInteger(section, importName(field), 0);
    if (column > 0 && column <= columnCount) mapping.columns[field] = column;
  }
  return mapping.columns[fieldControlNum] > 0 ? std::optional(mapping) : std::nullopt;
}

void TcolumnMapping::save(const TiniFile& ini) const {
  TiniFile::Tentries entries;
  for (std::size_t field = 0; field < importFieldCount; ++field) {
    entries.emplace_back(importName(field), std::to_string(columns[field]));
  }
  ini.write(section, entries);
}

void TcolumnMapping::saveChanges(const TiniFile& ini, const TcolumnMapping& before) const {
  TiniFile::Tentries entries;
  for (std::size_t field = 0; field < importFieldCount; ++field) {
    if (columns[field] != before.columns[field]) {
      entries.emplace_back(importName(field), std::to_string(columns[field]));
    }
  }
  if (!entries.empty()) ini.write(section, entries);
}

TcolumnMapping TcolumnMapping::fromHeadings(const TfieldList& headings, const Tcaptions& captions) {
  return {columnsByHeadings(headings, captions)};
}

TcolumnMapping startMapping(const std::optional<TcolumnMapping>& stored, const TfieldList& headings,
                            const Tcaptions& captions) {
  const bool isStored = stored && stored->columns[fieldControlNum] > 0;
  const TfieldColumns named = columnsByHeadings(headings, captions);
  if (!isStored) return {named};
  if (named[fieldControlNum] == 0 || !contradict(stored->columns, named)) return *stored;
  TcolumnMapping mapping{named};
  for (std::size_t field = 0; field < importFieldCount; ++field) {
    const int column = stored->columns.at(field);
    const bool isTaken = std::find(named.begin(), named.end(), column) != named.end();
    if (named.at(field) == 0 && !isTaken) mapping.columns.at(field) = column;
  }
  return mapping;
}
