#pragma once

#include <array>
#include <string>
#include <string_view>

// A record's text is Windows-1252, one byte per character. These functions work on the bytes.

/// `text` without the blanks and control characters (bytes 0x00 to 0x20) at its ends. The no-break space 0xA0 and the
/// five bytes that Windows-1252 leaves undefined stay.
std::string_view trimmedText(std::string_view text);

/// `text` without its control characters (bytes below 0x20, and 0x7F). A tab becomes a blank, and so does each run of
/// line breaks.
std::string withoutControls(std::string_view text);

/// `text` with the typographic closing quote (0x94) in place of each double quote, which would end the field in the
/// record files.
std::string withoutDoubleQuotes(std::string_view text);

/// The lower-case letter for each byte, or the byte itself when it has none. Source: the Unicode consortium's table for
/// the code page and its simple case mappings.
extern const std::array<unsigned char, 256> lowerCaseTable;

/// `text` in lower case by that table.
std::string lowerCased(std::string_view text);

/// Whether two section names, keys or file names are equal. The case of ASCII letters does not count.
bool sameName(std::string_view a, std::string_view b);
