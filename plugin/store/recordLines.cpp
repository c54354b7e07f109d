#include "store/recordLines.h"

#include <algorithm>

#include "store/erException.h"
#include "store/lineGrammars.h"

namespace {

/// The longest piece that is read at a time, its line feed included: a buffer of 4096 bytes less its terminating zero.
constexpr std::size_t longestPiece = 4095;

bool isBlank(std::string_view piece) {
  return piece.find_first_not_of(lineSpace) == std::string_view::npos;
}

/// Cuts a text into lines, and lines into pieces of at most 4095 bytes.
class TpieceReader {
 public:
  explicit TpieceReader(std::string_view content) : rest_(content) {}

  bool atEnd() const { return rest_.empty(); }

  /// The next piece, its line feed included.
  std::string_view next() {
    startsLine_ = endedLine_;
    const std::string_view window = rest_.substr(0, longestPiece);
    const std::size_t lineFeed = window.find('\n');
    endedLine_ = lineFeed != std::string_view::npos;
    const std::string_view piece = endedLine_ ? window.substr(0, lineFeed + 1) : window;
    rest_.remove_prefix(piece.size());
    return piece;
  }

  /// Whether the piece last given is the first of its line.
  bool startsLine() const { return startsLine_; }

 private:
  std::string_view rest_;
  bool startsLine_ = true;
  bool endedLine_ = true;
};

template <typename Entry, typename Parse>
void readLines(TlineList<Entry>& list, std::size_t recordLimit, Parse parse) {
  TpieceReader reader(list.content);
  bool lineCounted = false;
  while (!reader.atEnd()) {
    const std::string_view piece = reader.next();
    if (reader.startsLine()) lineCounted = false;
    if (isBlank(piece)) continue;
    if (list.entries.size() > recordLimit) {
      throw TERException(ERDATAOVERFLOW, "More than the specified number of records were found");
    }
    if (!lineCounted) ++list.lineCount;
    lineCounted = true;
    Entry entry;
    if (parse(piece, entry)) {
      list.entries.push_back(entry);
      list.fileLines.push_back(list.lineCount - 1);
    } else {
      list.dropped = true;
    }
  }
}

}  // namespace

void readDataLines(TdataList& list, std::size_t recordLimit) {
  readLines(list, recordLimit, [](std::string_view line, _EQDAT& entry) {
    return parseDataLine(line, entry) && entry.testProc >= minTestProc && entry.testProc <= maxTestProc;
  });
}

void readInfoLines(TinfoList& list, std::size_t recordLimit) {
  readLines(list, recordLimit, parseInfoLine);
}
