#pragma once

#include <filesystem>
#include <string_view>

/// `folder` joined with `name`, a name or several with "/" between. Each name is looked up without regard to case, so
/// that `DATA` and `Data` are one folder on every file system: the exact name where it exists, else the first by byte
/// order that differs in case only, else the name as it is given.
std::filesystem::path findPath(const std::filesystem::path& folder, std::string_view name);
