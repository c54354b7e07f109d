#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "store/commitMarker.h"
#include "store/datastructs.h"
#include "store/erException.h"
#include "store/unsavedChanges.h"
#include "support/fileSystem.h"
#include "support/messageText.h"

class TsavedPair;

/// Where the files of a list are.
struct TlistPlaces {
  std::filesystem::path workingFolder;  ///< holds `DATA` with the record files
  std::vector<std::filesystem::path>
      unsavedFolders;  ///< for the file of unsaved changes: the first that can be written
};

/// How a save ended.
struct TsaveReport {
  bool succeeded = false;
  std::optional<TmessageText> message;   ///< to be shown
  std::string details;                   ///< to be shown below the message; ASCII
  std::optional<TequipRecTable> joined;  ///< the list that was saved, if others' changes are in it
};

/// The record files `DATA/eq.dat` and `DATA/eqinfo.dat` of a working folder, as one window works on them.
///
/// A save never overwrites what this window has not read. After a load that was not clean, the next save first copies
/// what it finds to names of its own (`eq.dat.kept-1`, ...). When another program has changed the files, a save joins
/// both lists. Until it is saved, every change is also in the file of unsaved changes. The log gets a line for each
/// load and save.
class TequipRecFiles {
 public:
  explicit TequipRecFiles(TlistPlaces places, TfileSystem& files = diskFileSystem());

  /// Fills the table. Returns the message to show, if any.
  std::optional<TmessageText> load(TequipRecTable& table) noexcept;

  /// Writes the whole table, joined with what other programs have changed since the load or the last save. Writes
  /// nothing if there is no change to save and either the files were changed by others or the load failed and the files
  /// exist.
  TsaveReport save(const TequipRecTable& table) noexcept;

  /// The changes since the load or the last save: the owner of the table adds each of them.
  TunsavedChanges& unsaved() { return unsaved_; }

  /// Changes that killed programs left and that are not in `loaded`, the list as it was loaded; empty if there are
  /// none. Nothing is looked for after a load that could not read the files.
  TlistEdits findUnsaved(const TequipRecTable& loaded) noexcept;

 private:
  /// What another program has done to the files meanwhile.
  enum class Tmeanwhile { nothing, changed, removed, unknown };

  struct Tstamps {
    TstampResult data;
    TstampResult info;

    bool areAbsent() const { return data.isAbsent() && info.isAbsent(); }
  };

  std::filesystem::path dataPath() const;
  std::filesystem::path infoPath() const;
  Tstamps stamps() const;
  TERResult loadFiles(TequipRecTable& table);
  TERResult saveFiles(const TequipRecTable& table, TsaveReport& outcome);
  TERResult saveJoined(const TequipRecTable& table, TsavedPair& pair, TsaveReport& outcome);
  TERResult loadTheirs(TequipRecTable& list, TsavedPair& pair) const;
  std::string failedSaveDetails() noexcept;
  TERResult write(const TequipRecTable& table, TsavedPair& pair);
  Tmeanwhile meanwhile(const Tstamps& found, TsavedPair& pair) const;
  bool areHeld(const TpairSums& sums, TsavedPair& pair, bool& unknown) const;

  TlistPlaces places_;
  TfileSystem& files_;
  TunsavedChanges unsaved_;
  bool unread_ = true;    ///< the load failed: the table holds nothing of what the files may hold
  bool allRead_ = false;  ///< the table holds everything in the files that are known
  Tstamps known_;         ///< of the files as they were loaded or saved
  TpairSums knownSums_;
  TpairSums writtenSums_;  ///< what the last save wrote, even if it was not finished
};
