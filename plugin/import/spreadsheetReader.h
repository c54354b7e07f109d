#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "import/tokeniser.h"

struct TimportRow;

/// Reads the rows of a text as spreadsheets write them (RFC 4180).
///
/// A field may be quoted, which its first character tells. Within the quotes two quotes are one, delimiters belong to
/// the field, and each line break becomes a blank. What stands between the closing quote and the delimiter is kept. In
/// any other field a quote is a character. CR, LF and CRLF end a row; a delimiter before them starts an empty field. An
/// empty line is a row without fields. A UTF-8 byte-order mark at the start is skipped.
///
/// A quote that is not closed within 1 MB ends with its line. A row has at most 4095 fields, and they together 4095
/// characters; the rest of the row is cut.
///
/// Where the delimiter is the quote, no field is quoted. Where it is a CR or an LF, it still ends the row.
class TspreadsheetReader {
 public:
  /// The stream must outlive the reader. `goOn`, if given, is called before each read of the stream and stops the
  /// reading when it returns false.
  TspreadsheetReader(std::istream& stream, char delimiter, std::function<bool()> goOn = {});

  /// Reads the next row but for its replaced characters. False at the end, and after a stop or a failure.
  bool next(TimportRow& row);

  /// Where each field of the last row begins in the text, from column 1 on.
  const std::vector<std::uint64_t>& fieldStarts() const { return starts_; }
  /// Where the text of the row that is being read, or was read last, was cut; far away when it was not.
  std::uint64_t cutPosition() const { return cutPosition_; }
  /// The number of bytes consumed so far.
  std::uint64_t position() const { return bufferStart_ + begin_; }

 private:
  bool beginRow();
  bool takeSimpleRow(TfieldList& fields);
  std::size_t simpleFieldEnd(std::size_t from, std::size_t rowEnd, TfieldList& fields);
  void takeRow(TfieldList& fields);
  void takeField();
  void takeQuoted();
  void takePlain();
  void skipLine();
  bool takeDelimiter();
  void takeBreak();
  std::size_t closingQuote();
  void append(std::size_t from, std::size_t to);
  void appendQuoted(std::size_t from, std::size_t to);

  // Offsets count from the unread part of the buffer.
  char& at(std::size_t offset) { return buffer_[begin_ + offset]; }
  std::size_t available() const { return end_ - begin_; }
  std::size_t offsetOf(char c, std::size_t from, std::size_t to) const;
  bool isAvailable(std::size_t offset);
  bool more();
  bool isOver() const { return stopped_ || stream_.bad(); }
  bool isCut() const;

  std::istream& stream_;
  std::function<bool()> goOn_;
  char delimiter_;
  bool isUsual_;                   ///< the delimiter is neither the quote nor a line break
  std::array<bool, 256> stops_{};  ///< the characters that end a field without quotes
  bool stopped_ = false;

  std::vector<char> buffer_;
  std::uint64_t bufferStart_ = 0;  ///< the buffer's offset in the text
  std::size_t begin_ = 0;          ///< of the unread part of the buffer
  std::size_t end_ = 0;
  bool afterReturn_ = false;  ///< a line feed that comes next belongs to the end of the last row

  std::string text_;               ///< of the row's fields, one after the other
  std::vector<std::size_t> ends_;  ///< of each field in `text_`
  std::vector<std::uint64_t> starts_;
  std::uint64_t cutPosition_ = 0;
  bool isQuoteOpen_ = false;
};
