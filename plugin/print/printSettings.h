#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>

#include "store/columns.h"

class TiniFile;

/// The columns that the user may choose for a report: all but the record number, which is always printed.
inline constexpr auto printColumns = std::span(allColumns).subspan<1>();
inline constexpr std::size_t printColumnCount = printColumns.size();
static_assert(allColumns.front().id == columnNumber);

/// The user's choices in the print dialog: section `PRINT` of `EquipmentRecord.ini`.
struct TprintSettings {
  /// Which of `printColumns` are printed. The default is what the grid shows by default.
  std::array<bool, printColumnCount> printed = printedAtFirst();
  bool landscape = false;
  std::string paper;      ///< its key (see `paperKey`); empty: the usual one
  std::string pdfFolder;  ///< of the last PDF file, Windows-1252; empty: the user's documents

  bool printsAny() const;

  static TprintSettings load(const TiniFile& ini);
  void save(const TiniFile& ini) const;

 private:
  static std::array<bool, printColumnCount> printedAtFirst();
};
