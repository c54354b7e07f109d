#pragma once

#include <filesystem>

#include "bench/folders.h"
#include "import/columnMapping.h"
#include "import/importOptions.h"
#include "import/importRun.h"
#include "store/datastructs.h"

// Imports without windows, of files made from the full list.

inline constexpr std::size_t importColumns = 8;
inline constexpr TcolumnMapping eachColumn = {{1, 2, 3, 4, 5, 6, 7, 8}};

/// Skips duplicates.
class TeverOnward : public TimportObserver {
 public:
  bool goOn(int percent) override;
  Tduplicate duplicate(std::string& deviceId) override;
};

/// Repeats the records of the full list up to `count` lines with tabs, each with a Device ID of its own.
std::filesystem::path makeLines(const TbenchFolders& folders, std::size_t count);
TimportOptions optionsOfLines(const std::filesystem::path& path);

/// The same in UTF-8, as spreadsheets write it: with semicolons, and each text in quotes.
std::filesystem::path makeSpreadsheet(const TbenchFolders& folders, std::size_t count);
TimportOptions optionsOfSpreadsheet(const std::filesystem::path& path);

/// Milliseconds of an import, including adding the records to the table. Throws `std::runtime_error` unless the table
/// then has this many.
double importBare(const TimportOptions& options, std::size_t expected = equipRecLimit);
