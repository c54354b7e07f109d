#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "print/printSettings.h"
#include "store/columns.h"

class TtestProcTable;

/// What the browser hands to the print dialog. The tables stay the browser's and must not change while the dialog is
/// open.
struct TprintJob {
  const TequipRecTable& records;
  const TtestProcTable& titles;
  std::vector<TrecordIndex> shown;     ///< the records that the grid shows, in its order
  std::vector<TrecordIndex> selected;  ///< those of them that are selected, in the same order
  Tcaptions customNames;               ///< captions of the custom fields (Windows-1252)
};

/// What a report shows: a row for each record, a column for the record number and one for each field chosen. All texts
/// are Windows-1252. The tables of the job must outlive it.
class TreportTable {
 public:
  TreportTable(const TprintJob& job, std::vector<TrecordIndex> rows, const TprintSettings& settings);

  std::size_t rowCount() const { return rows_.size(); }
  std::size_t columnCount() const { return columns_.size(); }

  const std::string& heading(std::size_t column) const { return columns_[column].heading; }
  /// Whether a column holds numbers, which stand at its right edge and are never wrapped.
  bool isNumber(std::size_t column) const;
  /// A cell's text, trimmed.
  std::string text(std::size_t row, std::size_t column) const;

 private:
  struct Tcolumn {
    int source;  ///< a field id, or one of the sources in the implementation
    std::string heading;
  };

  const TequipRecTable& records_;
  const TtestProcTable& titles_;
  std::vector<TrecordIndex> rows_;
  std::vector<Tcolumn> columns_;
};
