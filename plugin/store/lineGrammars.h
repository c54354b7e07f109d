#pragma once

#include <string_view>

struct _EQDAT;   // NOLINT(clang-diagnostic-reserved-identifier): the established name
struct _EQINFO;  // NOLINT(clang-diagnostic-reserved-identifier): the established name

/// White space, which may stand between the tokens of a line. A blank line holds nothing else.
inline constexpr std::string_view lineSpace = " \t\r\n\v\f";

/// Parses a line of the data file: a quoted control number, a comma, an unsigned decimal number of 32 bits. White space
/// is allowed between these, and nothing else after them. A quoted text goes on to the next double quote and may hold
/// any byte but that and zero. False: the line is something else, and `entry` holds nothing of use.
bool parseDataLine(std::string_view line, _EQDAT& entry);

/// Parses a line of the information file: a quoted text for each text field, with commas between them; otherwise as
/// `parseDataLine`.
bool parseInfoLine(std::string_view line, _EQINFO& entry);
