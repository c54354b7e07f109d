#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

/// The width of each Windows-1252 character in one font.
using TcharWidths = std::array<int, 256>;

int textWidth(std::string_view text, const TcharWidths& widths);

/// The width of a text's widest word, which wrapping should not break.
int widestWord(std::string_view text, const TcharWidths& widths);

/// Breaks a text into lines no wider than `width`: at blanks, which are dropped, or after hyphens; within a word only
/// if the word is wider than a line. A line holds at least one character. An empty text is one empty line. The lines
/// are views of `text`.
std::vector<std::string_view> wrappedLines(std::string_view text, const TcharWidths& widths, int width);

/// The number of lines that `wrappedLines` returns.
std::size_t lineCount(std::string_view text, const TcharWidths& widths, int width);
