#include "bench/folders.h"

#include "bench/measure.h"
#include "store/datastructs.h"
#include "store/recordLoad.h"
#include "support/fileSystem.h"
#include "testproc/autosequenceFileStructs.h"

std::string contentOf(const std::filesystem::path& path) {
  std::string content;
  const auto result = diskFileSystem().read(path, content);
  require(result.end == TreadResult::Tend::done, path.string() + " cannot be read");
  return content;
}

TequipRecTable fullTable(const TbenchFolders& folders) {
  TequipRecTable records;
  const TERResult result =
      TequipRecFromFile(&records, equipRecLimit, folders.dataFile(), folders.infoFile(), diskFileSystem());
  require(result.status == ERSUCCESS && result.complete,
          "the list was not loaded whole, status " + std::to_string(result.status));
  require(records.count() == equipRecLimit, "the list is not full");
  return records;
}

void loadTitles(const TbenchFolders& folders, TtestProcTable& titles) {
  const auto result = loadTestProcTable(diskFileSystem(), folders.data / "DATA/testProc.asq", titles);
  require(result == TtestProcLoad::loaded, "the test procedure titles were not loaded");
}
