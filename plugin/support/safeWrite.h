#pragma once

#include <filesystem>
#include <string_view>

#include "support/failure.h"

class TfileSystem;

/// Creates the file at `path`, or empties it, and brings `content` to the disk, with the permissions of `like`. Where
/// it fails, a part of the content may be there.
Toutcome writeFlushed(TfileSystem& files, const std::filesystem::path& path, const std::filesystem::path& like,
                      std::string_view content);

/// Replaces the content of one file, all or nothing, whatever happens meanwhile; keeps its permissions, and a symbolic
/// link in its place. Where it fails, the file holds the old content whole or, if only the very last flush failed, the
/// new one.
Toutcome replaceFile(TfileSystem& files, const std::filesystem::path& path, std::string_view content);
