#pragma once

#include <filesystem>
#include <optional>

#include "store/erException.h"
#include "support/fileSystem.h"
#include "support/messageText.h"

class TequipRecTable;

/// The record files `DATA/eq.dat` and `DATA/eqinfo.dat` of a working folder, as one window works on them.
///
/// A save never overwrites what this window has not read. After a load that was not clean, and when another program has
/// changed the files, the next save first copies what it finds to a name of its own (`eq.dat.kept-1`, ...). The log
/// gets a line for each load and save.
class TequipRecFiles {
 public:
  explicit TequipRecFiles(std::filesystem::path workingFolder, TfileSystem& files = diskFileSystem());

  /// Fills the table. Returns the message to show, if any.
  std::optional<TmessageText> load(TequipRecTable& table) noexcept;

  /// Writes the whole table. Returns the message to show if the save failed.
  std::optional<TmessageText> save(const TequipRecTable& table) noexcept;

 private:
  struct Tstamps {
    std::optional<TfileStamp> data;
    std::optional<TfileStamp> info;

    bool operator==(const Tstamps&) const = default;
  };

  std::filesystem::path dataPath() const;
  std::filesystem::path infoPath() const;
  Tstamps stamps() const;
  TERResult loadFiles(TequipRecTable& table);
  TERResult saveFiles(const TequipRecTable& table);
  void keepFilesIfUnread();

  std::filesystem::path workingFolder_;
  TfileSystem& files_;
  bool allRead_ = false;  ///< the table holds everything in the files with the stamps `known_`
  Tstamps known_;         ///< of the files as they were loaded or kept
  Tstamps written_;       ///< of the files as this window last wrote them
};
