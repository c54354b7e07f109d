#pragma once

#include <optional>
#include <string>
#include <string_view>

// Reading and changing the lines of an INI text by the same rules, so that what was written is what is read.

/// The value of `key` in the INI text `content`, without blanks around it. The first line of the key in any section of
/// that name counts; nothing if there is none. The result points into `content`.
std::optional<std::string_view> iniValue(std::string_view content, std::string_view section, std::string_view key);

/// The INI text `content` with `key=value` in `section`. The entry replaces the key's first line; if there is none, it
/// is added at the end of the section, or in a new section at the end. Every other byte stays.
std::string withIniValue(std::string_view content, std::string_view section, std::string_view key,
                         std::string_view value);
