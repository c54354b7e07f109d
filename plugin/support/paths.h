#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// `folder` joined with `name`, which may hold several names with "/" between. Each name is looked up without regard to
/// case, so that `DATA` and `Data` are one folder on every file system: the exact name if it exists, otherwise the
/// first in byte order that differs only in case, otherwise the name as given.
std::filesystem::path findPath(const std::filesystem::path& folder, std::string_view name);

/// A path as UTF-8 text, for the log.
std::string pathText(const std::filesystem::path& path);
