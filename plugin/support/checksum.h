#pragma once

#include <cstdint>
#include <string_view>

/// The CRC-32 of zip and zlib over `bytes`. With `before`, the CRC-32 of what precedes them, over both.
std::uint32_t crc32Of(std::string_view bytes, std::uint32_t before = 0);
