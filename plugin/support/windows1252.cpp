#include "support/windows1252.h"

#include <algorithm>
#include <array>

#include "support/recordText.h"

namespace {

/// The characters of the bytes 0x80 to 0x9F; every other byte is the character of the same value. Source: the Unicode
/// consortium's table for the code page, with the undefined bytes 81, 8D, 8F, 90 and 9D as C1 controls.
constexpr std::array<char16_t, 32> upperControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char16_t toCharacter(unsigned char byte) {
  return byte >= 0x80 && byte < 0xA0 ? upperControls[byte - 0x80U] : char16_t{byte};
}

}  // namespace

std::optional<char> toRecordByte(char32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<char>(character);
  const auto* const found = std::find(upperControls.begin(), upperControls.end(), character);
  if (found == upperControls.end()) return std::nullopt;
  return static_cast<char>(0x80 + (found - upperControls.begin()));
}

QString fromRecordText(std::string_view bytes) {
  QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
  QChar* out = text.data();
  for (const char byte : bytes) *out++ = toCharacter(static_cast<unsigned char>(byte));
  return text;
}

std::optional<std::string> toRecordText(const QString& text) {
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(text.size()));
  for (const QChar character : text) {
    const std::optional<char> byte = toRecordByte(character.unicode());
    if (!byte) return std::nullopt;
    bytes.push_back(*byte);
  }
  return bytes;
}

QString withoutDoubleQuotes(QString text) {
  return text.replace(u'"', fromRecordText(withoutDoubleQuotes(std::string_view("\""))));
}
