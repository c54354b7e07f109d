#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "store/datastructs.h"

class TtestProcTable;

/// What is sought, as the four search boxes say it (Windows-1252, trimmed).
struct TsearchTexts {
  std::string description;
  std::string manufacturer;
  std::string model;
  std::string general;  ///< in every searchable field whose own text is empty

  bool isEmpty() const;
};

/// Finds texts in the records of one table, without regard to case.
///
/// Keeps all texts in lower case, each field's one behind the other, so that a search runs straight through them; they
/// are made anew when the table has changed. Table and titles must outlive the search.
class TrecordSearch {
 public:
  TrecordSearch(const TequipRecTable& records, const TtestProcTable& titles) : records_(records), titles_(titles) {}

  /// The records that any of the searches matches, each once: first those that the first search found, in table order,
  /// then those that the next one adds, and so on. A field matches where the text occurs in it; an empty field never
  /// does. The test procedure's number is not searched, its title is.
  std::vector<TrecordIndex> find(const TsearchTexts& texts);

 private:
  /// One field of all records: their texts in lower case, a zero byte behind each, and where each begins.
  struct Tcolumn {
    std::string texts;
    std::vector<std::uint32_t> starts;

    void append(std::string_view text);
    std::vector<TrecordIndex> find(const std::string& needle) const;
  };

  void refresh();
  std::vector<TrecordIndex> findTitle(const std::string& needle) const;

  const TequipRecTable& records_;
  const TtestProcTable& titles_;
  std::uint64_t revision_ = 0;  ///< of the table that the columns were made from; 0 for none
  std::array<Tcolumn, fieldCount> columns_;
};
