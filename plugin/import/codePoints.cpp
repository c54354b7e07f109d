#include "import/codePoints.h"

#include <cstring>

namespace {

constexpr char32_t brokenCharacter = 0xFFFD;

constexpr TcodePoint broken(std::size_t length) {
  return {brokenCharacter, length, false};
}

/// The bytes that may follow a lead byte. Fewer than usual where others would encode a character longer than needed, a
/// surrogate, or nothing.
struct Tcontinuation {
  unsigned low;
  unsigned high;
};

constexpr Tcontinuation anyContinuation = {0x80, 0xBF};

constexpr Tcontinuation secondAfter(unsigned lead) {
  if (lead == 0xE0) return {0xA0, 0xBF};
  if (lead == 0xED) return {0x80, 0x9F};
  if (lead == 0xF0) return {0x90, 0xBF};
  if (lead == 0xF4) return {0x80, 0x8F};
  return anyContinuation;
}

constexpr bool isHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

constexpr bool isLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

}  // namespace

TcodePoint Tutf8::at(std::string_view text, bool isEnd) const {
  const auto lead = static_cast<unsigned char>(text[0]);
  if (lead < 0x80) return {lead, 1};
  if (lead < 0xC2 || lead > 0xF4) return broken(1);
  const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  char32_t character = lead & (0x7FU >> length);
  Tcontinuation allowed = secondAfter(lead);
  for (std::size_t i = 1; i < length; ++i) {
    if (i == text.size()) return isEnd ? broken(i) : TcodePoint();
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte < allowed.low || byte > allowed.high) return broken(i);
    character = character << 6U | (byte & 0x3FU);
    allowed = anyContinuation;
  }
  return {character, length};
}

std::size_t Tutf8::takePlain(std::string_view text, std::string& out) const {
  const std::size_t length = asciiLength(text);
  if (length < 2) return 0;
  out.append(text.substr(0, length - 1));
  return length - 1;
}

char16_t Tutf16::unit(std::string_view text, std::size_t at) const {
  const auto first = static_cast<unsigned char>(text[at]);
  const auto second = static_cast<unsigned char>(text[at + 1]);
  return static_cast<char16_t>(isBigEndian_ ? first << 8U | second : second << 8U | first);
}

TcodePoint Tutf16::at(std::string_view text, bool isEnd) const {
  const TcodePoint incomplete = isEnd ? broken(text.size()) : TcodePoint();
  if (text.size() < 2) return incomplete;
  const char16_t first = unit(text, 0);
  if (isLowSurrogate(first)) return broken(2);
  if (!isHighSurrogate(first)) return {first, 2};
  if (text.size() < 4) return incomplete;
  const char16_t second = unit(text, 2);
  if (!isLowSurrogate(second)) return broken(2);
  return {0x10000 + ((first & 0x3FFU) << 10U) + (second & 0x3FFU), 4};
}

std::size_t Tutf16::takePlain(std::string_view text, std::string& out) const {
  std::size_t used = 0;
  while (used + 4 <= text.size() && unit(text, used) < 0x80 && unit(text, used + 2) < 0x80) {
    out.push_back(static_cast<char>(unit(text, used)));
    used += 2;
  }
  return used;
}

std::size_t asciiLength(std::string_view text) {
  constexpr std::uint64_t highBits = 0x8080808080808080;
  std::size_t length = 0;
  for (std::uint64_t word = 0; length + sizeof word <= text.size(); length += sizeof word) {
    std::memcpy(&word, text.data() + length, sizeof word);
    if ((word & highBits) != 0) break;
  }
  while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80) ++length;
  return length;
}

std::optional<std::size_t> utf8Length(std::string_view text) {
  std::size_t length = 0;
  while (true) {
    length += asciiLength(text.substr(length));
    if (length == text.size()) return length;
    const TcodePoint next = Tutf8().at(text.substr(length), false);
    if (!next.isValid) return std::nullopt;
    if (next.length == 0) return length;
    length += next.length;
  }
}
