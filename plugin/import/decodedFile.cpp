#include "import/decodedFile.h"

#include <algorithm>
#include <cstring>
#include <ios>
#include <utility>

#include "import/codePoints.h"

namespace {

constexpr char endMark = '\x1A';
constexpr std::size_t longestSegment = 4096;

}  // namespace

TdecodedFile::TdecodedFile(std::istream& file, Tcharset charset)
    : file_(file), charset_(charset), chunk_(fileStartSize) {
  endMarkBlock_.fill(endMark);
}

std::uint64_t TdecodedFile::sourcePosition(std::uint64_t position) const {
  const bool isWide = encoding_ == Tencoding::utf16Little || encoding_ == Tencoding::utf16Big;
  const std::uint64_t end = decoded_ + text_.size() - laterEndMarks_;
  const std::uint64_t done = read_ - undecoded().size();
  return done - std::min((end - std::min(position, end)) * (isWide ? 2 : 1), done);
}

std::optional<Treplacement> TdecodedFile::takeReplaced(std::uint64_t before) {
  if (replaced_.empty() || replaced_.front().position >= before) return std::nullopt;
  const Treplacement first = replaced_.front();
  replaced_.pop_front();
  return first;
}

void TdecodedFile::dropReplaced(std::uint64_t from, std::uint64_t to) {
  const auto at = [this](std::uint64_t position) {
    return std::lower_bound(replaced_.begin(), replaced_.end(), position,
                            [](const Treplacement& entry, std::uint64_t p) { return entry.position < p; });
  };
  if (from < to) replaced_.erase(at(from), at(to));
}

bool TdecodedFile::endsLineAt(std::uint64_t position) const {
  const bool isLast = position == delivered_ + static_cast<std::uint64_t>(gptr() - eback());
  return !isLast || (gptr() > eback() ? gptr()[-1] : lastDelivered_) == '\n';
}

TdecodedFile::int_type TdecodedFile::underflow() {
  if (egptr() > eback()) lastDelivered_ = egptr()[-1];
  delivered_ += static_cast<std::uint64_t>(egptr() - eback());
  setg(nullptr, nullptr, nullptr);
  while (ready_ == 0) {
    if (!decode()) return traits_type::eof();
    ready_ = text_.find_last_not_of(endMark) + 1;
    const std::uint64_t atEnd = text_.size() - ready_;
    endMarks_ = ready_ > 0 ? laterEndMarks_ : 0;
    laterEndMarks_ = ready_ > 0 ? atEnd : laterEndMarks_ + atEnd;
  }
  if (endMarks_ > 0) {
    const std::size_t length = std::min<std::uint64_t>(endMarks_, endMarkBlock_.size());
    endMarks_ -= length;
    deliver(endMarkBlock_.data(), length);
  } else {
    deliver(text_.data(), std::exchange(ready_, 0));
  }
  return traits_type::to_int_type(*gptr());
}

void TdecodedFile::deliver(char* text, std::size_t length) {
  if (delivered_ == 0) startsWithMark_ = std::string_view(text, length).starts_with("\xEF\xBB\xBF");
  setg(text, text, text + length);
}

/// Fills the chunk behind what is not decoded yet.
void TdecodedFile::read() {
  chunkSize_ -= used_;
  std::memmove(chunk_.data(), chunk_.data() + used_, chunkSize_);
  used_ = 0;
  while (!ended_ && chunkSize_ < chunk_.size()) {
    const auto room = static_cast<std::streamsize>(chunk_.size() - chunkSize_);
    const auto size = static_cast<std::size_t>(file_.rdbuf()->sgetn(chunk_.data() + chunkSize_, room));
    ended_ = size == 0;
    chunkSize_ += size;
    read_ += size;
  }
}

/// Decodes the next chunk into `text_`. False: there is no more.
bool TdecodedFile::decode() {
  if (file_.bad()) throw std::ios_base::failure("read");
  decoded_ += text_.size();
  text_.clear();
  read();
  if (chunkSize_ == 0) return false;
  if (!encoding_) {
    const auto start = TfileStart::of(undecoded(), charset_);
    encoding_ = start.encoding;
    used_ = start.markLength;
  }
  decodeChunk();
  return true;
}

void TdecodedFile::decodeChunk() {
  switch (*encoding_) {
    case Tencoding::ascii:
      return decodeAscii();
    case Tencoding::bytes:
      text_.append(undecoded());
      used_ = chunkSize_;
      return;
    case Tencoding::utf8:
      return decodeWith(Tutf8());
    case Tencoding::utf16Little:
    case Tencoding::utf16Big:
      return decodeWith(Tutf16(encoding_ == Tencoding::utf16Big));
  }
}

/// Keeps the last character back, with which the next chunk's first one may combine.
void TdecodedFile::decodeAscii() {
  const std::string_view text = undecoded();
  const std::size_t length = asciiLength(text);
  if (length == text.size()) {
    text_.append(text.substr(0, ended_ ? length : length - 1));
    used_ += text_.size();
    return;
  }
  const bool isUtf8 = isUtf8From(*file_.rdbuf(), static_cast<std::streamoff>(read_ - text.size() + length));
  goTo(*file_.rdbuf(), static_cast<std::streamoff>(read_));
  encoding_ = isUtf8 ? Tencoding::utf8 : Tencoding::bytes;
  decodeChunk();
}

template <class Tcoding>
void TdecodedFile::decodeWith(const Tcoding& coding) {
  for (std::size_t taken = 1; taken > 0 && used_ < chunkSize_; used_ += taken) {
    used_ += coding.takePlain(undecoded(), text_);
    taken = takeSegment(coding, undecoded());
  }
}

/// Decodes a character and those that may combine with it. Returns the bytes used: none if more may belong to them.
template <class Tcoding>
std::size_t TdecodedFile::takeSegment(const Tcoding& coding, std::string_view text) {
  segment_.clear();
  std::size_t length = 0;
  while (segment_.size() < longestSegment && (length < text.size() || !ended_)) {
    const TcodePoint next = length < text.size() ? coding.at(text.substr(length), ended_) : TcodePoint();
    if (next.length == 0) return 0;
    if (!segment_.empty() && isInert(next.character)) break;
    segment_.push_back(next.character);
    length += next.length;
  }
  appendSegment(segment_, text_, decoded_, replaced_);
  return length;
}
