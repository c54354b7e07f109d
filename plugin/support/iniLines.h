#pragma once

#include <string>
#include <string_view>

/// The INI text `content` with `key=value` in `section`: in the place of the key's first line, else as a new line at
/// the end of the section, else in a new section at the end. Every other byte stays.
std::string withIniValue(std::string_view content, std::string_view section, std::string_view key,
                         std::string_view value);
