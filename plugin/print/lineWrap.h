#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

/// The width of each Windows-1252 character in a font.
using TcharWidths = std::array<int, 256>;

int textWidth(std::string_view text, const TcharWidths& widths);

/// The width of the widest piece of a text that wrapping would rather not break.
int widestWord(std::string_view text, const TcharWidths& widths);

/// Cuts a text into lines no wider than `width`: at blanks, which go, or behind hyphens; in the middle of a word only
/// where that alone is wider than a line. A line holds at least one character. An empty text is one empty line. The
/// lines are views of `text`.
std::vector<std::string_view> wrappedLines(std::string_view text, const TcharWidths& widths, int width);

/// How many lines that makes.
std::size_t lineCount(std::string_view text, const TcharWidths& widths, int width);
