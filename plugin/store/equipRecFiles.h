#pragma once

#include <filesystem>
#include <optional>

#include "store/erException.h"
#include "support/fileSystem.h"
#include "support/messages.h"

class TequipRecTable;

/// The record files `DATA/eq.dat` and `DATA/eqinfo.dat` of a working folder, as one window works on them.
///
/// Nothing that this window has not read is ever overwritten: after a load that was not clean, and when the files on
/// the disk are no longer those that were loaded or last saved, the next save first keeps what it finds under a name of
/// its own (`eq.dat.kept-1`, ...).
class TequipRecFiles {
 public:
  explicit TequipRecFiles(std::filesystem::path workingFolder, TfileSystem& files = diskFileSystem());

  /// Fills the table. Returns the message to show, if any. Never throws.
  std::optional<TmessageText> load(TequipRecTable& table) noexcept;

  /// Writes the whole table. Returns the message to show, if any; with one, nothing counts as saved. Never throws.
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
  TERStatus loadFiles(TequipRecTable& table);
  TERStatus saveFiles(const TequipRecTable& table);
  void keepFilesIfUnread();

  std::filesystem::path workingFolder_;
  TfileSystem& files_;
  bool allRead_ = false;  ///< the table holds all that the files with the stamps `known_` say
  Tstamps known_;         ///< of the files as they were loaded or kept
  Tstamps written_;       ///< of the files as this window last wrote them
};
