#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "store/commitMarker.h"
#include "store/recordEdits.h"
#include "store/unsavedFile.h"

/// The changes of a list that are in no record file yet: in memory, and in the file `EquipmentRecord.unsaved`, from
/// which they come back after the program was killed.
///
/// The first change creates the file, in the first of the folders that can be written, under the first free name (`-2`,
/// `-3`, ... while other programs run on theirs); a save removes it. Each entry is appended and flushed before the call
/// returns. The owner holds a lock on the file as long as it lives; a file without one is an orphan. Where the file
/// cannot be written, the changes stay in memory, and the next change tries again. No function throws. Several objects,
/// in one program or several, may use the same folders.
class TunsavedChanges {
 public:
  TunsavedChanges(std::vector<std::filesystem::path> folders, TfileSystem& files);
  TunsavedChanges(const TunsavedChanges&) = delete;
  TunsavedChanges& operator=(const TunsavedChanges&) = delete;
  ~TunsavedChanges();

  /// A list was loaded, or saved and changed by joining: changes count from here. `listName` tells it from other lists.
  /// Forgets what was added before; leaves a file of it alone.
  void begin(std::string listName);

  /// Adds changes that were just made.
  void add(const TlistEdits& edits) noexcept;

  /// What all changes since `begin` come to.
  TlistEdits net() const;

  /// Whether every change so far is on the disk; tries once more to bring it there.
  bool isSafe() noexcept;
  /// The file's path; empty while there is none.
  const std::filesystem::path& path() const { return own_.path; }

  /// The next save will write record files with these fingerprints. If the program is killed after that save is
  /// decided, its changes are then not offered again.
  void saving(const TpairSums& sums) noexcept;
  /// The save succeeded: forgets all changes and removes the files.
  void saved() noexcept;

  /// Looks for orphans of this list, and takes their locks. `current` are the fingerprints of the record files as they
  /// are: what a killed save has brought into them is left out, and a file with nothing else is removed. Returns what
  /// each orphan comes to; empty if there is nothing to offer.
  std::vector<TlistEdits> findOrphans(const TpairSums& current) noexcept;
  /// The changes of the orphans were made as `edits` on the list, which `add` has not been told. From now on they are
  /// changes of this object, and its file replaces those of the orphans.
  void adopt(const TlistEdits& edits) noexcept;
  /// The user does not want the orphans: they are renamed to `EquipmentRecord.unsaved.kept-1` or the next free number.
  void setAside() noexcept;

 private:
  void write(const std::string& entry);
  bool append(std::string_view entry);
  void writeAnew();
  void voidSpent();
  void moveToSpent(std::vector<TunsavedFile>& files);

  std::vector<std::filesystem::path> folders_;
  TfileSystem& files_;
  std::string listName_;
  std::string entries_;    ///< all since `begin`, as in a file
  TunsavedFile own_;       ///< holds `entries_` if `isWritten_`; without a path if there is none
  bool isWritten_ = true;  ///< all entries are on the disk
  bool isFailureTold_ = false;
  std::vector<TunsavedFile> spent_;    ///< to be removed in this order
  std::vector<TunsavedFile> orphans_;  ///< found, neither adopted nor set aside
};
