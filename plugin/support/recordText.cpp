#include "support/recordText.h"

#include <algorithm>

namespace {

bool isBlankOrControl(char c) {
  return static_cast<unsigned char>(c) <= 0x20;
}

bool isControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

char lowerAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr std::array<unsigned char, 256> makeLowerCaseTable() {
  std::array<unsigned char, 256> table{};
  for (unsigned byte = 0; byte < table.size(); ++byte) {
    const bool ascii = byte >= 'A' && byte <= 'Z';
    const bool latin = byte >= 0xC0 && byte <= 0xDE && byte != 0xD7;  // all but the multiplication sign
    const bool caron = byte == 0x8A || byte == 0x8C || byte == 0x8E;  // S caron, OE, Z caron
    table[byte] = static_cast<unsigned char>(ascii || latin ? byte + 0x20 : caron ? byte + 0x10 : byte);
  }
  table[0x9F] = 0xFF;  // Y diaeresis
  return table;
}

}  // namespace

const std::array<unsigned char, 256> lowerCaseTable = makeLowerCaseTable();

std::string lowerCased(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = static_cast<char>(lowerCaseTable[static_cast<unsigned char>(c)]);
  return lower;
}

std::string_view trimmedText(std::string_view text) {
  while (!text.empty() && isBlankOrControl(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlankOrControl(text.back())) text.remove_suffix(1);
  return text;
}

std::string withoutControls(std::string_view text) {
  std::string cleaned;
  bool isInBreak = false;
  for (const char c : text) {
    const bool isBreak = c == '\r' || c == '\n';
    if (isControl(c) && c != '\t' && (!isBreak || isInBreak)) continue;
    cleaned += isControl(c) ? ' ' : c;
    isInBreak = isBreak;
  }
  return cleaned;
}

std::string withoutDoubleQuotes(std::string_view text) {
  constexpr char closingQuote = '\x94';
  std::string replaced(text);
  std::replace(replaced.begin(), replaced.end(), '"', closingQuote);
  return replaced;
}

bool sameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lowerAscii(x) == lowerAscii(y); });
}
