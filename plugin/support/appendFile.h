#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

enum class TappendResult { done, full, failed };

/// Appends `bytes` to a regular file with a single write, so that several programs can append to it at once and each
/// piece stays whole. Creates the file, but not its folder. `full`: the file would grow beyond `mostBytes`, and nothing
/// was written.
TappendResult appendToFile(const std::filesystem::path& path, std::string_view bytes, std::uint64_t mostBytes);

/// Renames the file to `older`, replacing the file of that name, if it is longer than `bytes`. Several programs may
/// call this at once: the file is renamed only once. Failures go unnoticed.
void turnFileOver(const std::filesystem::path& path, const std::filesystem::path& older, std::uint64_t bytes);
