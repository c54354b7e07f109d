#pragma once

#include <vector>

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
