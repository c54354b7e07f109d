#pragma once

#include <filesystem>
#include <string>

class TequipRecTable;
class TtestProcTable;

/// Where a run finds its list and may write.
struct TbenchFolders {
  std::filesystem::path data;     ///< the full list and its settings; only read
  std::filesystem::path scratch;  ///< emptied at the start of a run; lies on the disk whose speed counts

  std::filesystem::path dataFile() const { return data / "DATA/eq.dat"; }
  std::filesystem::path infoFile() const { return data / "DATA/eqinfo.dat"; }
};

/// A file whole. Throws `std::runtime_error` where it cannot be read.
std::string contentOf(const std::filesystem::path& path);

/// The full list. Throws `std::runtime_error` where it cannot be loaded or is not full.
TequipRecTable fullTable(const TbenchFolders& folders);
void loadTitles(const TbenchFolders& folders, TtestProcTable& titles);
