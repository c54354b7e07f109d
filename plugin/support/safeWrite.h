#pragma once

#include <filesystem>
#include <string_view>

class TfileSystem;

/// Creates the file at `path`, or empties it, and brings `content` to the disk, with the permissions of `like`.
/// False: it did not get there whole; a part of it may stand.
bool writeFlushed(TfileSystem& files, const std::filesystem::path& path, const std::filesystem::path& like,
                  std::string_view content);

/// Replaces the content of one file, all or nothing, whatever happens meanwhile; keeps its permissions, and a symbolic
/// link in its place. False: it failed; the file holds the old content or, where only the very last flush failed, the
/// new one, and either whole.
bool replaceFile(TfileSystem& files, const std::filesystem::path& path, std::string_view content);
