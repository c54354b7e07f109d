#include "import/recordBytes.h"

#include <QList>
#include <QString>
#include <algorithm>
#include <array>

#include "support/windows1252.h"

namespace {

/// A Latin letter whose stroke, bar or hook is no accent to Unicode, or whose dot is missing. In the order of the
/// characters.
struct Tstroke {
  char16_t character;
  char letter;
};

constexpr std::array<Tstroke, 68> strokes = {
    {{0x0110, 'D'}, {0x0111, 'd'}, {0x0126, 'H'}, {0x0127, 'h'}, {0x0131, 'i'},   {0x013F, 'L'}, {0x0140, 'l'},
     {0x0141, 'L'}, {0x0142, 'l'}, {0x0166, 'T'}, {0x0167, 't'}, {0x0180, 'b'},   {0x0181, 'B'}, {0x0182, 'B'},
     {0x0183, 'b'}, {0x0187, 'C'}, {0x0188, 'c'}, {0x018A, 'D'}, {0x018B, 'D'},   {0x018C, 'd'}, {0x0191, 'F'},
     {0x0193, 'G'}, {0x0197, 'I'}, {0x0198, 'K'}, {0x0199, 'k'}, {0x019A, 'l'},   {0x019D, 'N'}, {0x019E, 'n'},
     {0x019F, 'O'}, {0x01A4, 'P'}, {0x01A5, 'p'}, {0x01AB, 't'}, {0x01AC, 'T'},   {0x01AD, 't'}, {0x01AE, 'T'},
     {0x01B2, 'V'}, {0x01B3, 'Y'}, {0x01B4, 'y'}, {0x01B5, 'Z'}, {0x01B6, 'z'},   {0x01E4, 'G'}, {0x01E5, 'g'},
     {0x0220, 'N'}, {0x0221, 'd'}, {0x0224, 'Z'}, {0x0225, 'z'}, {0x0234, 'l'},   {0x0235, 'n'}, {0x0236, 't'},
     {0x0237, 'j'}, {0x023A, 'A'}, {0x023B, 'C'}, {0x023C, 'c'}, {0x023D, 'L'},   {0x023E, 'T'}, {0x023F, 's'},
     {0x0240, 'z'}, {0x0243, 'B'}, {0x0246, 'E'}, {0x0247, 'e'}, {0x0248, 'J'},   {0x0249, 'j'}, {0x024B, 'q'},
     {0x024C, 'R'}, {0x024D, 'r'}, {0x024E, 'Y'}, {0x024F, 'y'}, {0x1E9E, '\xDF'}}};

char withoutStroke(char32_t character) {
  const auto* const found = std::lower_bound(strokes.begin(), strokes.end(), character,
                                             [](const Tstroke& entry, char32_t c) { return entry.character < c; });
  return found != strokes.end() && found->character == character ? found->letter : '?';
}

char32_t firstOf(const QString& text) {
  const auto characters = text.toUcs4();
  return characters.isEmpty() ? 0 : characters.front();
}

}  // namespace

bool isInert(char32_t character) {
  return character < 0x300 || toRecordByte(character).has_value();
}

char baseLetter(char32_t character) {
  while (QChar::decompositionTag(character) == QChar::Canonical) {
    character = firstOf(QChar::decomposition(character));
    if (const auto byte = toRecordByte(character)) return QChar::isLetter(character) ? *byte : '?';
  }
  return withoutStroke(character);
}

void appendSegment(const std::u32string& segment, std::string& bytes, std::uint64_t position,
                   std::deque<Treplacement>& replaced) {
  const auto append = [&](char32_t character) {
    const auto byte = toRecordByte(character);
    if (!byte) replaced.push_back({position + bytes.size(), character});
    bytes.push_back(byte ? *byte : baseLetter(character));
  };
  if (segment.size() == 1 && isInert(segment[0])) return append(segment[0]);
  QString text;  // not by `fromUcs4`, which takes a U+FEFF at the front for a byte order mark
  for (const char32_t character : segment) text += QChar::fromUcs4(character);
  for (const auto character : text.normalized(QString::NormalizationForm_C).toUcs4()) append(character);
}
