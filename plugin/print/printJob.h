#pragma once

#include <array>
#include <string>
#include <vector>

#include "store/datastructs.h"

class TtestProcTable;

/// What the browser hands to the print dialog. The tables stay the browser's and must not change while the dialog is
/// open.
struct TprintJob {
  const TequipRecTable& records;
  const TtestProcTable& titles;
  std::vector<TrecordIndex> shown;         ///< the records that the grid shows, in its order
  std::vector<TrecordIndex> selected;      ///< those of them that are selected, in the same order
  std::array<std::string, 3> customNames;  ///< captions of the custom fields (Windows-1252)
};
