#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "store/columns.h"

class TtestProcTable;

/// The texts of the four search boxes (Windows-1252, trimmed).
struct TsearchTexts {
  std::string description;
  std::string manufacturer;
  std::string model;
  std::string general;  ///< in every searchable field whose own text is empty

  bool isEmpty() const;
};

/// The columns in which the texts occur in one record, in the order in which the search looks at them.
std::vector<TcolumnId> columnsFound(const TsearchTexts& texts, const TrecordView& record);

/// What was searched for, as in `Description "pump", General "3M"`; empty if all texts are.
std::string inWords(const TsearchTexts& texts);

/// Finds texts in the records of one table, without regard to case.
///
/// Keeps all texts in lower case, field by field in one piece of memory, so that a search runs straight through them.
/// Rebuilds them when the table has changed. Table and titles must outlive the search.
class TrecordSearch {
 public:
  TrecordSearch(const TequipRecTable& records, const TtestProcTable& titles) : records_(records), titles_(titles) {}

  /// The records that any of the searches matches, each once: first the hits of the first search in table order, then
  /// those that the next one adds, and so on. A field matches if the text occurs in it; an empty field never matches.
  /// The title of the test procedure is searched, its number is not. A double quote finds the typographic one, too,
  /// which the editor stores in its place.
  std::vector<TrecordIndex> find(const TsearchTexts& texts);

 private:
  /// One field of all records: the texts in lower case, each with a zero byte behind it, and where each begins.
  struct TlowerTexts {
    std::string texts;
    std::vector<std::uint32_t> starts;

    void append(std::string_view text);
    std::vector<TrecordIndex> find(const std::string& needle) const;
  };

  void refresh();
  std::vector<TrecordIndex> findTitle(const std::string& needle) const;

  const TequipRecTable& records_;
  const TtestProcTable& titles_;
  std::uint64_t revision_ = 0;  ///< of the table that the columns were built from; 0 for none
  std::array<TlowerTexts, fieldCount> columns_;
};
