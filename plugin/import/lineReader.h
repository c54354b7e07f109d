#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <istream>
#include <optional>
#include <string>
#include <string_view>

/// Reads the lines of a text as bytes.
///
/// A line ends with a line feed, with a carriage return and a line feed, or with the text. A line longer than 4095
/// bytes is cut, and the rest of it skipped. A UTF-8 byte-order mark at the start is skipped.
class TlineReader {
 public:
  static constexpr std::size_t longestLine = 4095;

  /// The stream must outlive the reader. `goOn`, if given, is called before each read of the stream and stops the
  /// reading when it returns false.
  explicit TlineReader(std::istream& stream, std::function<bool()> goOn = {});

  /// The next line without its line end, valid until the next call. Nothing at the end of the text, and after a stop or
  /// a failure.
  std::optional<std::string_view> next();

  /// Whether the stream could not be read to its end.
  bool failed() const { return stream_.bad(); }
  /// The number of bytes consumed so far.
  std::uint64_t position() const { return chunkStart_ + begin_; }

 private:
  bool fill();
  void keep(std::string_view piece);

  std::istream& stream_;
  std::function<bool()> goOn_;
  bool stopped_ = false;
  std::array<char, 65536> chunk_{};
  std::uint64_t chunkStart_ = 0;  ///< the chunk's offset in the stream
  std::size_t begin_ = 0;         ///< of the unread part of the chunk
  std::size_t end_ = 0;
  std::string line_;  ///< a line that spans several chunks
};
