#pragma once

#include <array>
#include <string>
#include <string_view>

/// A record's text is Windows-1252, one byte a character. These rules work on the bytes.

/// `text` without the blanks and control characters (bytes 0x00 to 0x20) at its ends. The no-break space 0xA0 and the
/// five bytes that Windows-1252 leaves undefined stay.
std::string_view trimmedText(std::string_view text);

/// For each byte the lower-case letter of the same kind, itself where it has none: for comparisons in searches. Source:
/// the Unicode consortium's table for the code page and its simple case mappings.
extern const std::array<unsigned char, 256> lowerCaseTable;

/// `text` in lower case by that table.
std::string lowerCased(std::string_view text);

/// Whether two names are the same but for the case of ASCII letters, as section names, keys and file names are
/// compared.
bool sameName(std::string_view a, std::string_view b);
