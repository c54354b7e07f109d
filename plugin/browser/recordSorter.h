#pragma once

#include <vector>

#include "store/columns.h"

class TtestProcTable;

/// What records are sorted by, and in which direction.
struct Tsorting {
  TcolumnId column = columnNumber;
  bool ascending = true;
};

/// Sorts records by what a column shows: texts byte by byte, numbers by value, each stable. Descending is the ascending
/// result reversed, ties included. An unknown code sorts by record index.
void sortRecords(std::vector<TrecordIndex>& indices, const Tsorting& by, const TequipRecTable& records,
                 const TtestProcTable& titles);
