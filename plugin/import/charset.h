#pragma once

#include <cstdint>
#include <istream>

/// The character set of a file to import: the choices of the dialog, by their index.
enum class Tcharset : std::uint8_t { automatic, windows1252, utf8, utf16 };

inline constexpr int charsetCount = 4;

/// What `automatic` means for this file: one of the others. Reads ahead from the start, and goes back there.
Tcharset detectCharset(std::istream& file);
