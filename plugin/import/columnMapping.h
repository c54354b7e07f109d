#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "import/tokeniser.h"
#include "store/datastructs.h"

class TiniFile;

/// The fields that can be imported: the texts of a record by field id, then its test procedure number.
inline constexpr std::size_t importTestProc = fieldCount;
inline constexpr std::size_t importFieldCount = importTestProc + 1;

/// Which column of a line each field is taken from.
struct TcolumnMapping {
  std::array<int, importFieldCount> columns{};  ///< counted from 1; 0 for a field that is not imported

  /// The mapping in section `Import`, without columns beyond `columnCount`; nothing where none is stored.
  static std::optional<TcolumnMapping> load(const TiniFile& ini, int columnCount);
  void save(const TiniFile& ini) const;

  /// The columns whose headings name a field: the user's own captions of the custom fields first, then our names and
  /// those that other programs use. Case, blanks and punctuation do not count; no column serves two fields.
  static TcolumnMapping fromHeadings(const TfieldList& headings, const std::array<std::string, 3>& captions);
};
