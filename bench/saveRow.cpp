#include <fcntl.h>
#include <memory>
#include <unistd.h>

#include "bench/rows.h"
#include "store/datastructs.h"
#include "store/recordSave.h"
#include "support/fileSystem.h"

namespace {

/// The full list, where it is saved, and the bytes of a save.
struct TsavedList {
  explicit TsavedList(const TbenchFolders& folders) : folder(folders.scratch / "save") {
    std::filesystem::create_directories(folder);
    records = fullTable(folders);
  }

  std::filesystem::path folder;
  TequipRecTable records;
  std::string dataBytes;
  std::string infoBytes;
};

void save(const TsavedList& list) {
  const TERResult result = TequipRecToFile(list.records, list.records.count(), list.folder / "eq.dat",
                                           list.folder / "eqinfo.dat", diskFileSystem());
  require(result.status == ERSUCCESS, "the save failed");
}

void writePlainly(const std::filesystem::path& path, const std::string& bytes) {
  const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
  require(descriptor >= 0, path.string() + " cannot be opened");
  const bool written = ::write(descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  const bool flushed = ::fsync(descriptor) == 0;
  require(::close(descriptor) == 0 && written && flushed, path.string() + " cannot be written");
}

void writeBothPlainly(const TsavedList& list) {
  writePlainly(list.folder / "plain-data", list.dataBytes);
  writePlainly(list.folder / "plain-info", list.infoBytes);
}

/// Compares a real save, with formatting, flushing, commit marker and renames, with the minimum that puts the same
/// bytes on the same disk: truncate each file, write it in one piece and flush it. The cost of a flush varies more than
/// all the rest, so both sides run often and in turn.
Tsides prepareSave(const TbenchFolders& folders) {
  const auto list = std::make_shared<TsavedList>(folders);
  save(*list);
  list->dataBytes = contentOf(list->folder / "eq.dat");
  list->infoBytes = contentOf(list->folder / "eqinfo.dat");
  require(list->dataBytes == contentOf(folders.dataFile()) && list->infoBytes == contentOf(folders.infoFile()),
          "the save changed the list");
  return {[list] { return millisecondsOf([&] { save(*list); }); },
          [list] { return millisecondsOf([&] { writeBothPlainly(*list); }); }};
}

}  // namespace

std::vector<Trow> saveRows(const TbenchFolders& folders) {
  return {{"save", "ms", 2.0, 61, [folders] { return prepareSave(folders); }}};
}
