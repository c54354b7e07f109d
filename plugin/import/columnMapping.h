#pragma once

#include <optional>

#include "import/importFields.h"
#include "import/tokeniser.h"
#include "store/columns.h"

class TiniFile;

/// The column of a line from which each field is taken.
struct TcolumnMapping {
  TfieldColumns columns{};  ///< counted from 1; 0: the field is not imported

  /// The mapping in section `Import`, without columns beyond `columnCount`; nothing when that has no Device ID.
  static std::optional<TcolumnMapping> load(const TiniFile& ini, int columnCount);
  void save(const TiniFile& ini) const;
  /// Stores only the columns that are others than in `before`.
  void saveChanges(const TiniFile& ini, const TcolumnMapping& before) const;

  /// Finds each field's column by its heading; see `columnsByHeadings`.
  static TcolumnMapping fromHeadings(const TfieldList& headings, const Tcaptions& captions);
};

/// The mapping that an import starts with, of the one that was used last and what the headings say.
///
/// Without a stored mapping the headings alone count. The stored one stays as it is unless headings that name the
/// Device ID give one of its fields another column. It is then of another file: the headings win for the fields that
/// they name, and of the others a field keeps its column unless that has the heading of another field.
TcolumnMapping startMapping(const std::optional<TcolumnMapping>& stored, const TfieldList& headings,
                            const Tcaptions& captions);
