#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <istream>
#include <optional>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

#include "import/charset.h"
#include "import/recordBytes.h"

/// A file as Windows-1252, converted chunk by chunk while it is read.
///
/// Characters are composed (NFC). Those that Windows-1252 lacks become a base letter or a question mark. A byte order
/// mark is not part of the text, but for the mark of UTF-8 in a file of bytes. A run of 0x1A at the very end is
/// dropped.
///
/// A read error comes out as an exception, which an `std::istream` on top of this turns into its bad bit.
class TdecodedFile : public std::streambuf {
 public:
  /// Reads the file from its start. `file` must outlive this object and be able to seek.
  TdecodedFile(std::istream& file, Tcharset charset);

  /// About how many bytes of the file make the text up to a position.
  std::uint64_t sourcePosition(std::uint64_t position) const;

  /// Whether the text begins with the bytes of a UTF-8 byte order mark; known once it has been read.
  bool startsWithMark() const { return startsWithMark_; }

  /// Whether a line that ended at this position, up to which the text has been read, had a line feed.
  bool endsLineAt(std::uint64_t position) const;

  /// The next of the replaced characters before a position; takes it from the list.
  std::optional<Treplacement> takeReplaced(std::uint64_t before);
  /// Drops the replaced characters from one position up to another.
  void dropReplaced(std::uint64_t from, std::uint64_t to);

 protected:
  int_type underflow() override;

 private:
  void read();
  bool decode();
  std::string_view undecoded() const { return {chunk_.data() + used_, chunkSize_ - used_}; }
  void decodeChunk();
  void decodeAscii();
  template <class Tcoding>
  void decodeWith(const Tcoding& coding);
  template <class Tcoding>
  std::size_t takeSegment(const Tcoding& coding, std::string_view text);
  void deliver(char* text, std::size_t length);

  std::istream& file_;
  Tcharset charset_;
  std::optional<Tencoding> encoding_;  ///< known from the first chunk on
  std::vector<char> chunk_;
  std::size_t chunkSize_ = 0;
  std::size_t used_ = 0;  ///< decoded, at the front of the chunk
  bool ended_ = false;
  std::uint64_t read_ = 0;           ///< bytes of the file
  std::uint64_t decoded_ = 0;        ///< bytes of the text before `text_`
  std::string text_;                 ///< the decoded chunk
  std::size_t ready_ = 0;            ///< what is to be delivered of it, after `endMarks_`
  std::uint64_t endMarks_ = 0;       ///< 0x1A within the text
  std::uint64_t laterEndMarks_ = 0;  ///< 0x1A that may end the text
  std::array<char, 4096> endMarkBlock_{};
  std::uint64_t delivered_ = 0;  ///< bytes of the text before the get area
  char lastDelivered_ = '\0';
  bool startsWithMark_ = false;
  std::u32string segment_;
  std::deque<Treplacement> replaced_;
};
