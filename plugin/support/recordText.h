#pragma once

#include <string_view>

/// A record's text is Windows-1252, one byte a character. These rules work on the bytes.

/// `text` without the blanks and control characters (bytes 0x00 to 0x20) at its ends. The no-break space 0xA0 and the
/// five bytes that Windows-1252 leaves undefined stay.
std::string_view trimmedText(std::string_view text);

/// Whether two names are the same but for the case of ASCII letters, as section names, keys and file names are
/// compared.
bool sameName(std::string_view a, std::string_view b);
