#pragma once

#include <array>
#include <string>
#include <string_view>

// A record's text is Windows-1252, one byte a character. These functions work on the bytes.

/// `text` without the blanks and control characters (bytes 0x00 to 0x20) at its ends. The no-break space 0xA0 and the
/// five bytes that Windows-1252 leaves undefined stay.
std::string_view trimmedText(std::string_view text);

/// The lower-case letter of each byte, or the byte itself if it has none, for comparisons in searches. Source: the
/// Unicode consortium's table for the code page and its simple case mappings.
extern const std::array<unsigned char, 256> lowerCaseTable;

/// `text` in lower case by that table.
std::string lowerCased(std::string_view text);

/// Whether two names differ at most in the case of ASCII letters. Section names, keys and file names are compared so.
bool sameName(std::string_view a, std::string_view b);
