#pragma once

#include <vector>

#include "bench/folders.h"
#include "bench/measure.h"

// The rows of each topic, in printing order.

std::vector<Trow> loadRows(const TbenchFolders& folders);
std::vector<Trow> sortRows(const TbenchFolders& folders);
std::vector<Trow> saveRows(const TbenchFolders& folders);
std::vector<Trow> unsavedRows(const TbenchFolders& folders);
std::vector<Trow> firstPaintRows(const TbenchFolders& folders);
std::vector<Trow> pageRows(const TbenchFolders& folders);
std::vector<Trow> commandRows(const TbenchFolders& folders);
std::vector<Trow> joinRows(const TbenchFolders& folders);
std::vector<Trow> printRows(const TbenchFolders& folders);
std::vector<Trow> uploadRows(const TbenchFolders& folders);
std::vector<Trow> importRows(const TbenchFolders& folders);
std::vector<Trow> bigFileRows(const TbenchFolders& folders);
