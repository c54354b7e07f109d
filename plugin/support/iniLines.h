#pragma once

#include <optional>
#include <string>
#include <string_view>

// The lines of an INI text, read and changed by the same rules, so that what was written is what is read.

/// The value of `key` in the INI text `content`, without blanks around it: that of the key's first line in any section
/// of that name; nothing where there is none. It points into `content`.
std::optional<std::string_view> iniValue(std::string_view content, std::string_view section, std::string_view key);

/// The INI text `content` with `key=value` in `section`: in the place of the key's first line, else as a new line at
/// the end of the section, else in a new section at the end. Every other byte stays.
std::string withIniValue(std::string_view content, std::string_view section, std::string_view key,
                         std::string_view value);
