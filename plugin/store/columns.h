#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "store/datastructs.h"

class TiniFile;

// The columns in which grid, report and export show the records. All texts are Windows-1252.

/// What a column shows: a text field by its field id, or one of the codes below.
using TcolumnId = std::uint16_t;

inline constexpr TcolumnId columnNumber = 997;    ///< "No.", the record's position counted from 1
inline constexpr TcolumnId columnTestProc = 998;  ///< the test procedure number
inline constexpr TcolumnId columnTitle = 999;     ///< the test procedure's title
inline constexpr TcolumnId columnNotFound = 1000;

/// Everything that is particular to one column; as `TtextField` says of a field.
struct Tcolumn {
  TcolumnId id;
  const char* name;
  const char* heading;
  const char* exportName;
  Tshown shown;

  /// The name in upper case: "CONTROLNUM".
  std::string settingsKey() const;
};

/// All columns, in the order in which they are shown: the custom fields come behind the test procedure.
inline constexpr auto allColumns = [] {
  std::array<Tcolumn, textFields.size() + 3> columns{};
  std::size_t count = 0;
  const auto addFields = [&](bool custom) {
    for (const TtextField& field : textFields) {
      if ((field.customNumber > 0) != custom) continue;
      columns.at(count++) = {static_cast<TcolumnId>(field.id), field.name, field.heading, field.exportName,
                             field.shown};
    }
  };
  columns.at(count++) = {columnNumber, "Number", "No.", "index", Tshown::always};
  addFields(false);
  columns.at(count++) = {columnTestProc, "TestProc", "Test Procedure", "test procedure num", Tshown::always};
  columns.at(count++) = {columnTitle, "Title", "Test Procedure Title", "test procedure title", Tshown::atFirst};
  addFields(true);
  return columns;
}();

/// The captions of the custom fields as the user named them, each possibly empty.
using Tcaptions = std::array<std::string, customFieldCount>;

/// The caption of a custom field.
template <typename Captions>
auto& captionOf(const TtextField& field, Captions& captions) {
  return captions.at(static_cast<std::size_t>(field.customNumber) - 1);
}

/// "Custom 1" and so on.
Tcaptions defaultCaptions();
/// The captions in section `CUSTOMFIELDS` of the settings, each with its default if it is missing.
Tcaptions loadCaptions(const TiniFile& ini);
void saveCaptions(const TiniFile& ini, const Tcaptions& captions);

/// A column's heading; "Unknown" for an unknown code.
std::string columnHeading(TcolumnId column, const Tcaptions& captions);

/// One record as its columns show it.
struct TrecordView {
  TrecordIndex index;
  const TequipRec& record;
  std::string_view title;  ///< of its test procedure
};

/// What a column shows of a record, trimmed; "INVALID DATA" for an unknown code.
std::string columnText(TcolumnId column, const TrecordView& shown);

/// What an export writes of a record: texts as they are stored, and the index counted from 0.
std::string exportText(TcolumnId column, const TrecordView& shown);
