#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "store/recordEdits.h"
#include "store/unsavedFile.h"

struct TpairSums;

/// The files of unsaved changes that nobody owns any more, with their locks.
struct TunsavedOrphans {
  std::vector<TunsavedFile> files;  ///< with changes to offer
  std::vector<TlistEdits> edits;    ///< what each of these files comes to
  std::vector<TunsavedFile> spent;  ///< whose changes are all elsewhere; to be removed in this order
};

/// Looks for the orphans of a list. `current` are the fingerprints of its record files: changes that these hold are
/// left out. Files with the ids `own` are the caller's.
///
/// Files of other lists, files that this user may not write, and files with content that is not understood are left
/// alone. Where the file system knows no locks, a file with changes counts as an orphan, since losing changes would be
/// worse than offering those of a program that still runs; that program notices that its file is gone, and makes
/// another one.
TunsavedOrphans findUnsavedOrphans(TfileSystem& files, const std::vector<std::filesystem::path>& folders,
                                   std::string_view listName, const TpairSums& current,
                                   const std::set<std::string>& own);
