#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "import/tokeniser.h"
#include "store/columns.h"

class TiniFile;

/// The fields that can be imported: a record's text fields by field id, then its test procedure number.
inline constexpr std::size_t importTestProc = textFields.size();
inline constexpr std::size_t importFieldCount = importTestProc + 1;

/// A field's name in the settings ("Desc") and in the names of its controls ("cbDesc", "EditDesc").
constexpr const char* importName(std::size_t field) {
  return field == importTestProc ? "TestProc" : textFields.at(field).importName;
}

/// The column of a line from which each field is taken.
struct TcolumnMapping {
  std::array<int, importFieldCount> columns{};  ///< counted from 1; 0: the field is not imported

  /// The mapping in section `Import`, without columns beyond `columnCount`; nothing when none is stored.
  static std::optional<TcolumnMapping> load(const TiniFile& ini, int columnCount);
  void save(const TiniFile& ini) const;

  /// Finds each field's column by its heading. The user's captions of the custom fields come first, then our own names
  /// and those of other programs. Case, blanks and punctuation do not count. No column serves two fields.
  static TcolumnMapping fromHeadings(const TfieldList& headings, const Tcaptions& captions);
};
