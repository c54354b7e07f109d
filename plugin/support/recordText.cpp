#include "support/recordText.h"

#include <algorithm>

namespace {

bool isBlankOrControl(char c) {
  return static_cast<unsigned char>(c) <= 0x20;
}

char lowerAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::string_view trimmedText(std::string_view text) {
  while (!text.empty() && isBlankOrControl(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlankOrControl(text.back())) text.remove_suffix(1);
  return text;
}

bool sameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lowerAscii(x) == lowerAscii(y); });
}
