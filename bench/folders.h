#pragma once

#include <filesystem>
#include <string>

class TequipRecTable;
class TtestProcTable;

/// Where a run reads its list and where it may write.
struct TbenchFolders {
  std::filesystem::path data;     ///< the full list and its settings; only read
  std::filesystem::path scratch;  ///< emptied at the start of a run; on the disk to measure

  std::filesystem::path dataFile() const { return data / "DATA/eq.dat"; }
  std::filesystem::path infoFile() const { return data / "DATA/eqinfo.dat"; }
};

/// The whole content of a file. Throws `std::runtime_error` if it cannot be read.
std::string contentOf(const std::filesystem::path& path);

/// The full list. Throws `std::runtime_error` if it cannot be loaded or is not full.
TequipRecTable fullTable(const TbenchFolders& folders);
void loadTitles(const TbenchFolders& folders, TtestProcTable& titles);
