#include "import/lineReader.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string_view withoutEnd(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line.substr(0, TlineReader::longestLine);
}

}  // namespace

TlineReader::TlineReader(std::istream& stream, std::function<bool()> goOn) : stream_(stream), goOn_(std::move(goOn)) {}

std::optional<std::string_view> TlineReader::next() {
  line_.clear();
  bool begun = false;
  while (begin_ < end_ || fill()) {
    const std::string_view rest(chunk_.data() + begin_, end_ - begin_);
    const std::size_t lineFeed = rest.find('\n');
    const std::string_view piece = rest.substr(0, lineFeed);
    begin_ += lineFeed == std::string_view::npos ? piece.size() : piece.size() + 1;
    if (lineFeed != std::string_view::npos && !begun) return withoutEnd(piece);
    begun = true;
    keep(piece);
    if (lineFeed != std::string_view::npos) return withoutEnd(line_);
  }
  const bool whole = begun && !stopped_ && !failed();
  return whole ? std::optional(withoutEnd(line_)) : std::nullopt;
}

/// Reads the next chunk. False: there is no more.
bool TlineReader::fill() {
  stopped_ = stopped_ || (goOn_ && !goOn_());
  if (stopped_) return false;
  chunkStart_ += end_;
  stream_.read(chunk_.data(), static_cast<std::streamsize>(chunk_.size()));
  end_ = static_cast<std::size_t>(stream_.gcount());
  begin_ = 0;
  const bool marked = chunkStart_ == 0 && std::string_view(chunk_.data(), end_).starts_with(byteOrderMark);
  if (marked) begin_ = byteOrderMark.size();
  return begin_ < end_ && !failed();
}

/// Keeps one byte more than the longest line: it may be the carriage return before the line feed.
void TlineReader::keep(std::string_view piece) {
  line_.append(piece.substr(0, longestLine + 1 - std::min(line_.size(), longestLine + 1)));
}
