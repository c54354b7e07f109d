#include "import/spreadsheetReader.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "import/rowReader.h"

namespace {

constexpr std::size_t readSize = 65536;
constexpr std::size_t longestRow = 4095;
constexpr std::size_t longestQuote = 1UL << 20U;
constexpr char quote = '"';
constexpr std::size_t notThere = std::numeric_limits<std::size_t>::max();
constexpr std::uint64_t notCut = std::numeric_limits<std::uint64_t>::max();
constexpr std::string_view utf8ByteOrderMark = "\xEF\xBB\xBF";

constexpr bool isBreak(char c) {
  return c == '\r' || c == '\n';
}

}  // namespace

TspreadsheetReader::TspreadsheetReader(std::istream& stream, char delimiter, std::function<bool()> goOn)
    : stream_(stream),
      goOn_(std::move(goOn)),
      delimiter_(delimiter),
      isUsual_(delimiter != quote && !isBreak(delimiter)) {
  for (const char c : {delimiter, '\r', '\n'}) stops_.at(static_cast<unsigned char>(c)) = true;
  text_.reserve(longestRow);
}

bool TspreadsheetReader::next(TimportRow& row) {
  if (!beginRow()) return false;
  if (!takeSimpleRow(row.fields)) takeRow(row.fields);
  if (isOver()) return false;
  row.isCut = isCut();
  row.isQuoteOpen = isQuoteOpen_;
  return true;
}

/// False: there is no further row.
bool TspreadsheetReader::beginRow() {
  text_.clear();
  ends_.clear();
  starts_.clear();
  cutPosition_ = notCut;
  isQuoteOpen_ = false;
  if (isOver()) return false;
  const bool isStart = position() == 0;
  if (isStart && isAvailable(2) && std::string_view(&at(0), 3) == utf8ByteOrderMark) begin_ += 3;
  if (afterReturn_ && isAvailable(0) && at(0) == '\n') ++begin_;
  afterReturn_ = false;
  return isAvailable(0);
}

/// Takes the usual row, whose fields stand in the buffer as they are. False: it is another one, and nothing was taken.
bool TspreadsheetReader::takeSimpleRow(TfieldList& fields) {
  const std::size_t length = offsetOf('\n', 0, std::min(available(), longestRow));
  if (!isUsual_ || length == notThere) return false;
  const std::size_t rowEnd = length > 0 && at(length - 1) == '\r' ? length - 1 : length;
  if (rowEnd == 0 || offsetOf('\r', 0, rowEnd) != notThere) return false;
  fields.assign(1, {});
  for (std::size_t from = 0; from <= rowEnd;) {
    starts_.push_back(position() + from);
    const std::size_t end = simpleFieldEnd(from, rowEnd, fields);
    if (end == notThere) {
      starts_.clear();
      return false;
    }
    from = end + 1;
  }
  begin_ += length + 1;
  return true;
}

/// Takes one field of such a row, and returns the offset of the delimiter behind it or of the row's end.
std::size_t TspreadsheetReader::simpleFieldEnd(std::size_t from, std::size_t rowEnd, TfieldList& fields) {
  const bool isQuoted = from < rowEnd && at(from) == quote;
  const std::size_t begin = isQuoted ? from + 1 : from;
  const std::size_t found = offsetOf(isQuoted ? quote : delimiter_, begin, rowEnd);
  if (!isQuoted) {
    fields.emplace_back(&at(begin), std::min(found, rowEnd) - begin);
    return std::min(found, rowEnd);
  }
  if (found == notThere || (found + 1 < rowEnd && at(found + 1) != delimiter_)) return notThere;
  fields.emplace_back(&at(begin), found - begin);
  return found + 1;
}

void TspreadsheetReader::takeRow(TfieldList& fields) {
  if (!isBreak(at(0))) {
    do takeField();
    while (takeDelimiter());
  }
  takeBreak();
  fields.assign(1, {});
  std::size_t begin = 0;
  for (const std::size_t end : ends_) {
    fields.emplace_back(text_.data() + begin, end - begin);
    begin = end;
  }
}

void TspreadsheetReader::takeField() {
  if (ends_.size() == longestRow && !isCut()) cutPosition_ = position();
  const bool counts = !isCut();
  if (counts) starts_.push_back(position());
  if (delimiter_ != quote && isAvailable(0) && at(0) == quote) takeQuoted();
  takePlain();
  if (counts) ends_.push_back(text_.size());
}

void TspreadsheetReader::takeQuoted() {
  if (const std::size_t close = closingQuote()) {
    appendQuoted(1, close);
    begin_ += close + 1;
    return;
  }
  isQuoteOpen_ = true;
  const char* text = &at(0);
  const char* lineEnd = std::find_if(text + 1, text + std::min(available(), 1 + longestQuote), isBreak);
  const auto length = static_cast<std::size_t>(lineEnd - text);
  appendQuoted(1, length);
  begin_ += length;
  skipLine();
}

/// The offset of the quote that closes the one at the front. 0: there is none.
std::size_t TspreadsheetReader::closingQuote() {
  constexpr std::size_t end = 1 + longestQuote;
  std::size_t from = 1;
  while (true) {
    const std::size_t known = std::min(available(), end);
    const std::size_t offset = offsetOf(quote, from, known);
    if (offset == notThere) {
      from = std::max(from, known);
      if (known == end || !more()) return 0;
      continue;
    }
    if (!isAvailable(offset + 1) || at(offset + 1) != quote) return offset;
    from = offset + 2;
  }
}

void TspreadsheetReader::takePlain() {
  do {
    std::size_t length = 0;
    while (length < available() && !stops_[static_cast<unsigned char>(at(length))]) ++length;
    if (length > 0) append(0, length);
    begin_ += length;
  } while (begin_ == end_ && more());
}

void TspreadsheetReader::skipLine() {
  do {
    while (begin_ < end_ && !isBreak(at(0))) ++begin_;
  } while (begin_ == end_ && more());
}

bool TspreadsheetReader::takeDelimiter() {
  if (!isAvailable(0) || isBreak(at(0))) return false;
  ++begin_;
  return true;
}

void TspreadsheetReader::takeBreak() {
  if (!isAvailable(0)) return;
  afterReturn_ = at(0) == '\r';
  ++begin_;
}

void TspreadsheetReader::append(std::size_t from, std::size_t to) {
  if (isCut()) return;
  const std::size_t length = std::min(to - from, longestRow - text_.size());
  text_.append(buffer_.data() + begin_ + from, length);
  if (length < to - from) cutPosition_ = position() + from + length;
}

/// Appends what stands between quotes.
void TspreadsheetReader::appendQuoted(std::size_t from, std::size_t to) {
  while (from < to && !isCut()) {
    std::size_t end = from;
    while (end < to && at(end) != quote && !isBreak(at(end))) ++end;
    append(from, end);
    if (end == to) return;
    const bool isPair = at(end) == quote || (at(end) == '\r' && end + 1 < to && at(end + 1) == '\n');
    if (at(end) != quote) at(end) = ' ';
    append(end, end + 1);
    from = end + (isPair ? 2 : 1);
  }
}

bool TspreadsheetReader::isCut() const {
  return cutPosition_ != notCut;
}

/// Where a character stands from one offset up to another; `notThere` if it does not.
std::size_t TspreadsheetReader::offsetOf(char c, std::size_t from, std::size_t to) const {
  const char* unread = buffer_.data() + begin_;
  const void* found = from < to ? std::memchr(unread + from, c, to - from) : nullptr;
  return found == nullptr ? notThere : static_cast<std::size_t>(static_cast<const char*>(found) - unread);
}

bool TspreadsheetReader::isAvailable(std::size_t offset) {
  while (offset >= available()) {
    if (!more()) return false;
  }
  return true;
}

/// Reads more of the text behind what is unread. False: there is no more.
bool TspreadsheetReader::more() {
  stopped_ = stopped_ || (goOn_ && !goOn_());
  if (stopped_) return false;
  if (begin_ > 0) std::memmove(buffer_.data(), buffer_.data() + begin_, available());
  bufferStart_ += begin_;
  end_ -= std::exchange(begin_, 0);
  if (buffer_.size() < end_ + readSize) buffer_.resize(end_ + readSize);
  stream_.read(buffer_.data() + end_, readSize);
  const auto size = static_cast<std::size_t>(stream_.gcount());
  end_ += size;
  return size > 0 && !stream_.bad();
}
