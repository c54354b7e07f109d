#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/fileSystem.h"

/// A file of unsaved changes that this process has taken.
struct TunsavedFile {
  std::filesystem::path path;
  std::string id;                       ///< of its header
  TfileStamp stamp;                     ///< when it was taken
  std::unique_ptr<TfileLock> lock;      ///< null where the file system knows no locks
  std::unique_ptr<TfileWriter> writer;  ///< behind its last byte; null of a file that this process did not create
};

/// `EquipmentRecord.unsaved`, `EquipmentRecord.unsaved-2` and so on in a folder, in this order.
std::vector<std::filesystem::path> unsavedFilesIn(TfileSystem& files, const std::filesystem::path& folder);

/// Creates the first of these files that does not exist, with its header, and takes it. Makes the folder if there is
/// none. Everything is on the disk when the call returns. Nothing if the folder cannot be used.
std::optional<TunsavedFile> createUnsavedFile(TfileSystem& files, const std::filesystem::path& folder,
                                              std::string_view listName);

/// Appends bytes and brings them to the disk. After a failure, any part of them may be there.
bool appendFlushed(const TunsavedFile& file, std::string_view bytes);

/// Whether the path names no file any more, or another one.
bool isGone(TfileSystem& files, const TunsavedFile& file);

/// Removes files, one after the other, and releases them. Each is gone from the disk before the next is removed. Stops
/// at the first that cannot be removed, and returns whether none is left.
bool removeInOrder(TfileSystem& files, std::vector<TunsavedFile>& spent);

/// Renames a file to `EquipmentRecord.unsaved.kept-1` or the next free number, and releases it.
void setAside(TfileSystem& files, TunsavedFile file);
