#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string_view>

/// The character set of a file to import: the choices of the dialog, by their index.
enum class Tcharset : std::uint8_t { automatic, windows1252, utf8, utf16 };

inline constexpr int charsetCount = 4;

/// What `automatic` means for this file: one of the others. Reads ahead from the start, and goes back there.
///
/// A byte order mark decides. Then zero bytes tell UTF-16: of the first 64 KB more than every second character has one,
/// all on the same side. Otherwise what begins with the first byte above ASCII decides, up to 16 MB of it: UTF-8 where
/// all of it is valid. Windows-1252 for anything else, for a file of ASCII alone, and after a read error, which sets
/// the stream's bad bit.
Tcharset detectCharset(std::istream& file);

/// How the bytes of a file are read.
enum class Tencoding : std::uint8_t {
  ascii,  ///< until the first byte above it decides
  bytes,
  utf8,
  utf16Little,
  utf16Big
};

/// What the first 64 KB of a file tell.
struct TfileStart {
  Tencoding encoding = Tencoding::bytes;
  std::size_t markLength = 0;  ///< of the byte order mark to skip; that of `bytes` is left to the readers

  static TfileStart of(std::string_view start, Tcharset charset);
};

inline constexpr std::size_t fileStartSize = 65536;

/// Whether the text from this offset on is valid UTF-8, as far as 16 MB tell. Leaves the file's position somewhere
/// else. Throws `std::ios_base::failure` when it cannot be read.
bool isUtf8From(std::streambuf& file, std::streamoff offset);

/// Throws `std::ios_base::failure` when the file cannot go there.
void goTo(std::streambuf& file, std::streamoff offset);
