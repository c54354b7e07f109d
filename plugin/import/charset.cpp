#include "import/charset.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <exception>
#include <ios>
#include <string>

#include "import/codePoints.h"

namespace {

constexpr std::size_t lookAhead = 16UL << 20U;
constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view littleMark = "\xFF\xFE";
constexpr std::string_view bigMark = "\xFE\xFF";

/// The zero bytes of a text, by whether their offset is even or odd.
std::array<std::size_t, 2> zeroBytes(std::string_view text) {
  std::array<std::size_t, 2> count{};
  for (std::size_t i = text.find('\0'); i != std::string_view::npos; i = text.find('\0', i + 1)) ++count[i % 2];
  return count;
}

/// The order that the zero bytes tell, if they do.
Tencoding byZeroBytes(std::string_view start) {
  const auto [even, odd] = zeroBytes(start);
  const auto isOneSided = [&start](std::size_t many, std::size_t few) {
    return many > start.size() / 4 && many > 1 && few <= many / 16;
  };
  if (isOneSided(odd, even)) return Tencoding::utf16Little;
  return isOneSided(even, odd) ? Tencoding::utf16Big : Tencoding::ascii;
}

TfileStart startOfUtf16(std::string_view start) {
  if (start.starts_with(littleMark)) return {Tencoding::utf16Little, littleMark.size()};
  if (start.starts_with(bigMark)) return {Tencoding::utf16Big, bigMark.size()};
  const auto [even, odd] = zeroBytes(start);
  return {even > odd ? Tencoding::utf16Big : Tencoding::utf16Little};
}

TfileStart startOfAny(std::string_view start) {
  if (start.starts_with(utf8Mark)) return {Tencoding::utf8, utf8Mark.size()};
  if (start.starts_with(littleMark) || start.starts_with(bigMark)) return startOfUtf16(start);
  return {byZeroBytes(start)};
}

/// The offset of the first byte above ASCII within what the detection looks at.
std::size_t endOfAscii(std::streambuf& file) {
  std::array<char, fileStartSize> block{};
  std::size_t offset = 0;
  while (offset < lookAhead) {
    const auto size = static_cast<std::size_t>(file.sgetn(block.data(), block.size()));
    const std::size_t length = asciiLength({block.data(), size});
    offset += length;
    if (size == 0 || length < size) break;
  }
  return offset;
}

Tcharset detected(std::streambuf& file) {
  std::string start(fileStartSize, '\0');
  goTo(file, 0);
  start.resize(static_cast<std::size_t>(file.sgetn(start.data(), static_cast<std::streamsize>(start.size()))));
  const Tencoding encoding = startOfAny(start).encoding;
  if (encoding == Tencoding::utf8) return Tcharset::utf8;
  if (encoding != Tencoding::ascii) return Tcharset::utf16;
  goTo(file, 0);
  const auto first = static_cast<std::streamoff>(endOfAscii(file));
  goTo(file, first);
  const bool isAbove = file.sgetc() >= 0x80;
  return isAbove && isUtf8From(file, first) ? Tcharset::utf8 : Tcharset::windows1252;
}

}  // namespace

Tcharset detectCharset(std::istream& file) {
  auto charset = Tcharset::windows1252;
  try {
    charset = detected(*file.rdbuf());
    goTo(*file.rdbuf(), 0);
  } catch (const std::exception&) {  // what a stream throws when it cannot be read
    file.setstate(std::ios_base::badbit);
  }
  return charset;
}

TfileStart TfileStart::of(std::string_view start, Tcharset charset) {
  switch (charset) {
    case Tcharset::automatic:
      return startOfAny(start);
    case Tcharset::utf8:
      return {Tencoding::utf8, start.starts_with(utf8Mark) ? utf8Mark.size() : 0};
    case Tcharset::utf16:
      return startOfUtf16(start);
    case Tcharset::windows1252:
      break;
  }
  return {};
}

bool isUtf8From(std::streambuf& file, std::streamoff offset) {
  goTo(file, offset);
  std::array<char, fileStartSize> block{};
  std::size_t kept = 0;
  for (std::size_t looked = 0; looked < lookAhead;) {
    const std::size_t wanted = std::min(block.size() - kept, lookAhead - looked);
    const auto size = static_cast<std::size_t>(file.sgetn(block.data() + kept, static_cast<std::streamsize>(wanted)));
    if (size == 0) return kept == 0;
    const auto whole = utf8Length({block.data(), kept + size});
    if (!whole) return false;
    looked += size;
    kept = kept + size - *whole;
    std::memmove(block.data(), block.data() + *whole, kept);
  }
  return true;
}

void goTo(std::streambuf& file, std::streamoff offset) {
  const std::streamoff reached = file.pubseekpos(offset, std::ios_base::in);
  if (reached != offset) throw std::ios_base::failure("seek");
}
