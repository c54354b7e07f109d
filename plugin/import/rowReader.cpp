#include "import/rowReader.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t markLength = 3;

}  // namespace

TrowReader::TrowReader(std::istream& file, const TimportOptions& options, std::function<bool()> goOn)
    : decoded_(file, options.charset),
      text_(&decoded_),
      delimiter_(options.delimiter),
      quotes_(options.quotes),
      goOn_(std::move(goOn)) {
  const auto callback = [this] { return this->goOn(); };
  if (options.spreadsheet) {
    rows_.emplace(text_, delimiter_, callback);
  } else {
    lines_.emplace(text_, callback);
  }
}

bool TrowReader::next(TimportRow& row) {
  row.replaced.clear();
  if (!rows_) return nextLine(row);
  if (!rows_->next(row)) return false;
  ++number_;
  takeReplaced(row, rows_->fieldStarts(), rows_->cutPosition());
  return true;
}

bool TrowReader::nextLine(TimportRow& row) {
  lineStart_ = lines_->position();
  const auto line = lines_->next();
  if (!line) return false;
  if (number_++ == 0 && decoded_.startsWithMark()) lineStart_ = markLength;
  row.fields = tokenise(*line, delimiter_, quotes_, std::move(row.fields));
  row.isCut = isLineCut(*line);
  row.hasOtherBreak = line->find('\r') != std::string_view::npos;
  starts_.clear();
  for (std::size_t i = 1; i < row.fields.size(); ++i) {
    starts_.push_back(lineStart_ + static_cast<std::size_t>(row.fields[i].data() - line->data()));
  }
  takeReplaced(row, starts_, lineStart_ + line->size());
  return true;
}

/// The line reader tells only how many bytes it used. Of a line with one byte too many, this byte stands behind the
/// line; where it is a carriage return, it belongs to the line's end.
bool TrowReader::isLineCut(std::string_view line) const {
  if (line.size() < TlineReader::longestLine) return false;
  const std::uint64_t used = lines_->position() - lineStart_;
  const std::uint64_t length = used - (decoded_.endsLineAt(lines_->position()) ? 1 : 0);
  return length > line.size() + 1 || (length == line.size() + 1 && *(line.data() + line.size()) != '\r');
}

/// What was replaced behind the cut of a very long row would need memory without end.
bool TrowReader::goOn() {
  const std::uint64_t cut = rows_ ? rows_->cutPosition() : lineStart_ + markLength + TlineReader::longestLine;
  decoded_.dropReplaced(cut, textPosition());
  return !goOn_ || goOn_();
}

/// Takes what was replaced in the row that has just been read. `end` is where its text ends or was cut.
void TrowReader::takeReplaced(TimportRow& row, const std::vector<std::uint64_t>& starts, std::uint64_t end) {
  while (const auto replaced = decoded_.takeReplaced(textPosition())) {
    const auto after = std::upper_bound(starts.begin(), starts.end(), replaced->position);
    const auto column = static_cast<std::size_t>(after - starts.begin());
    if (column > 0 && replaced->position < end) row.replaced.push_back({column, replaced->character});
  }
}
