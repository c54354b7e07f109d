#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// `folder` joined with `name`, which may hold several names with "/" between. Each name is looked up without regard to
/// case, so that `DATA` and `Data` are one folder on every file system: the exact name if it exists, otherwise the
/// first in byte order that differs only in case, otherwise the name as given. A name that cannot be looked up stays as
/// given.
std::filesystem::path findPath(const std::filesystem::path& folder, std::string_view name);

/// Fills in the names of everything in a folder, in no order; none after an error. Starts anew if a signal interrupts
/// it.
std::error_code namesInFolder(const std::filesystem::path& folder, std::vector<std::filesystem::path>& names);

/// A path as UTF-8 text, for the log.
std::string pathText(const std::filesystem::path& path);
