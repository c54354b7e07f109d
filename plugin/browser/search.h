#pragma once

#include <string>
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

/// The records that any of the searches matches, each once: first those that the first search found, in table order,
/// then those that the next one adds, and so on. A field matches where the text occurs in it, without regard to case;
/// an empty field never matches. The test procedure's number is not searched, its title is.
std::vector<TrecordIndex> findRecords(const TequipRecTable& records, const TtestProcTable& titles,
                                      const TsearchTexts& texts);
