#pragma once

#include <cstddef>
#include <string>
#include <string_view>

inline constexpr std::size_t randomNameLength = 16;

/// 16 hexadecimal digits in lower case that nobody else uses.
std::string randomName();

/// Whether a text has the form of one.
bool isRandomName(std::string_view text);
