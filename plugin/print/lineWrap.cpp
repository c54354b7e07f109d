#include "print/lineWrap.h"

#include <algorithm>

namespace {

int charWidth(char character, const TcharWidths& widths) {
  return widths[static_cast<unsigned char>(character)];
}

/// Where the first line of a text ends and the next one begins: at the text's length when there is no next line.
struct TlineCut {
  std::size_t end;
  std::size_t next;
};

TlineCut firstLine(std::string_view text, const TcharWidths& widths, int width) {
  TlineCut cut{0, 0};  // the last good place to break so far
  int used = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == ' ' && i > 0 && text[i - 1] != ' ') cut = {i, std::min(text.find_first_not_of(' ', i), text.size())};
    used += charWidth(text[i], widths);
    if (used > width && i > 0 && text[i] != ' ') return cut.next > 0 ? cut : TlineCut{i, i};
    if (text[i] == '-' && used <= width) cut = {i + 1, i + 1};
  }
  return {text.size(), text.size()};
}

}  // namespace

int textWidth(std::string_view text, const TcharWidths& widths) {
  int width = 0;
  for (const char character : text) width += charWidth(character, widths);
  return width;
}

int widestWord(std::string_view text, const TcharWidths& widths) {
  int widest = 0;
  int width = 0;
  for (const char character : text) {
    width = character == ' ' ? 0 : width + charWidth(character, widths);
    widest = std::max(widest, width);
  }
  return widest;
}

std::vector<std::string_view> wrappedLines(std::string_view text, const TcharWidths& widths, int width) {
  std::vector<std::string_view> lines;
  do {
    const TlineCut cut = firstLine(text, widths, width);
    lines.push_back(text.substr(0, cut.end));
    text.remove_prefix(cut.next);
  } while (!text.empty());
  return lines;
}

std::size_t lineCount(std::string_view text, const TcharWidths& widths, int width) {
  std::size_t lines = 0;
  do {
    ++lines;
    text.remove_prefix(firstLine(text, widths, width).next);
  } while (!text.empty());
  return lines;
}
