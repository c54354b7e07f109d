#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <istream>
#include <optional>
#include <string>
#include <string_view>

/// Reads a text line by line, byte for byte.
///
/// A line ends with a line feed, or a carriage return and a line feed; the last one may end with the text. One that is
/// longer than 4095 bytes is cut there and its rest passed over, so that a line stays one line. A UTF-8 byte-order mark
/// at the start is passed over.
class TlineReader {
 public:
  static constexpr std::size_t longestLine = 4095;

  /// The stream must outlive the reader. `goOn`, where given, is asked before each piece of the stream is read; when it
  /// says no, the reading is over.
  explicit TlineReader(std::istream& stream, std::function<bool()> goOn = {});

  /// The next line without its end, to be used before the next call; nothing where there is none, or where the reading
  /// was stopped or failed.
  std::optional<std::string_view> next();

  /// Whether the stream could not be read to its end.
  bool failed() const { return stream_.bad(); }
  /// Bytes used up so far.
  std::uint64_t position() const { return chunkStart_ + begin_; }

 private:
  bool fill();
  void keep(std::string_view piece);

  std::istream& stream_;
  std::function<bool()> goOn_;
  bool stopped_ = false;
  std::array<char, 65536> chunk_{};
  std::uint64_t chunkStart_ = 0;  ///< of the chunk in the stream
  std::size_t begin_ = 0;         ///< of what is not used up in the chunk
  std::size_t end_ = 0;
  std::string line_;  ///< a line that reaches over several chunks
};
