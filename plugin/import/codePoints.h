#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Characters from the bytes of UTF-8 and UTF-16. A broken sequence gives U+FFFD once for as many of its bytes as could
// have begun a character, as Unicode recommends.

struct TcodePoint {
  char32_t character = 0;
  std::size_t length = 0;  ///< in bytes; 0: the text ends within the character, and more may follow
  bool isValid = true;
};

class Tutf8 {
 public:
  /// The character at the front of a text that is not empty. `isEnd`: nothing follows the text.
  TcodePoint at(std::string_view text, bool isEnd) const;

  /// Appends the ASCII characters at the front of `text`, but for the last of them. Returns the bytes used.
  std::size_t takePlain(std::string_view text, std::string& out) const;
};

class Tutf16 {
 public:
  explicit Tutf16(bool isBigEndian) : isBigEndian_(isBigEndian) {}

  TcodePoint at(std::string_view text, bool isEnd) const;
  std::size_t takePlain(std::string_view text, std::string& out) const;

 private:
  char16_t unit(std::string_view text, std::size_t at) const;

  bool isBigEndian_;
};

/// The number of ASCII characters at the front of a text.
std::size_t asciiLength(std::string_view text);

/// The length of the whole characters in a text. Nothing when it is not UTF-8.
std::optional<std::size_t> utf8Length(std::string_view text);
