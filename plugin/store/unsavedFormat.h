#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "store/commitMarker.h"
#include "store/recordEdits.h"

/// Changes, or the fingerprints of the record files that hold every change before.
using TunsavedEntry = std::variant<TlistEdits, TpairSums>;

/// The content of a file `EquipmentRecord.unsaved`; docs/file-formats.md shows the format.
struct TunsavedContent {
  std::string id;  ///< a `randomName`
  std::string listName;
  std::vector<std::string> absorbed;   ///< ids of files whose changes this file holds, too
  std::vector<TunsavedEntry> entries;  ///< up to the first that is not whole

  /// All changes but those that record files with these fingerprints hold.
  TlistEdits editsNotIn(const TpairSums& sums) const;
};

/// `torn`: cut off inside its header. `foreign`: something else, or of another version.
enum class TunsavedShape { whole, torn, foreign };

/// `content` is complete only if the shape is `whole`.
TunsavedShape readUnsaved(std::string_view bytes, TunsavedContent& content);

/// All changes in a sequence of entries that this process has made.
TlistEdits editsIn(std::string_view entries);

/// What a file begins with.
std::string unsavedHeader(std::string_view id, std::string_view listName);
/// An entry with changes.
std::string editsEntry(const TlistEdits& edits);
/// An entry with the fingerprints of the record files that the next save writes.
std::string savingEntry(const TpairSums& sums);
/// An entry that replaces all entries before it by `entries`, and those of the files with the ids `absorbed`.
std::string restartEntry(const std::vector<std::string>& absorbed, std::string_view entries);
