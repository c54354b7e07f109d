#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "print/printSettings.h"
#include "store/columns.h"

class TtestProcTable;

/// What the browser gives the print dialog. The tables belong to the browser and must not change while the dialog is
/// open.
struct TprintJob {
  const TequipRecTable& records;
  const TtestProcTable& titles;
  std::vector<TrecordIndex> shown;     ///< the records that the grid shows, in its order
  std::vector<TrecordIndex> selected;  ///< the selected ones of them, in the same order
  Tcaptions captions;                  ///< of the custom fields
  std::string search = {};             ///< what was searched for, in words; empty where all records are shown
};

/// The cells of a report: one row per record; one column for the record number and one for each column chosen. All
/// texts are Windows-1252. The tables of the job must outlive it.
class TreportTable {
 public:
  TreportTable(const TprintJob& job, std::vector<TrecordIndex> rows, const TprintSettings& settings);

  std::size_t rowCount() const { return rows_.size(); }
  std::size_t columnCount() const { return columns_.size(); }

  std::string heading(std::size_t column) const { return columnHeading(columns_[column], captions_); }
  /// Whether a column holds numbers, which are right-aligned and never wrapped.
  bool isNumber(std::size_t column) const;
  /// What was searched for, in words; empty where all records are shown.
  const std::string& search() const { return search_; }
  /// A cell's text, trimmed.
  std::string text(std::size_t row, std::size_t column) const;

 private:
  const TequipRecTable& records_;
  const TtestProcTable& titles_;
  Tcaptions captions_;
  std::string search_;
  std::vector<TrecordIndex> rows_;
  std::vector<TcolumnId> columns_;
};
