#include "import/tableShape.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>
#include <string>

#include "import/headings.h"
#include "import/rowReader.h"
#include "support/recordText.h"

namespace {

constexpr double leastShare = 0.6;  // of the rows, with the same number of columns
constexpr std::size_t mostRowsAbove = 20;

/// The offset behind the quote that closes the one at `begin`; 0 where none does.
std::size_t afterQuotes(std::string_view text, std::size_t begin) {
  for (std::size_t at = text.find('"', begin + 1); at != std::string_view::npos; at = text.find('"', at + 2)) {
    if (at + 1 == text.size() || text[at + 1] != '"') return at + 1;
  }
  return 0;
}

/// How many fields a spreadsheet may have quoted, and how many others begin with a quote, or with blanks and a quote.
struct TquotedFields {
  std::size_t closed = 0;
  std::size_t other = 0;
};

TquotedFields quotedFields(std::string_view text, char delimiter) {
  TquotedFields fields;
  const auto endsField = [&](std::size_t i) {
    return i >= text.size() || text[i] == delimiter || text[i] == '\r' || text[i] == '\n';
  };
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::size_t begin = at;
    while (!endsField(at) && text[at] == ' ') ++at;
    if (!endsField(at) && text[at] == '"') {
      const std::size_t end = afterQuotes(text, at);
      const bool isClosed = at == begin && end > 0 && endsField(end);
      ++(isClosed ? fields.closed : fields.other);
      if (isClosed) at = end;
    }
    while (!endsField(at)) ++at;
  }
  return fields;
}

/// What reading the text with one delimiter gives.
struct Ttrial {
  char delimiter = ',';
  std::size_t columns = 1;
  double worth = 0;
};

Ttrial tried(std::string_view text, char delimiter, const Tcaptions& captions) {
  std::istringstream file{std::string(text)};
  TspreadsheetReader reader(file, delimiter);
  TimportRow row;
  std::map<std::size_t, std::size_t> rowsByColumns;
  std::size_t rows = 0;
  bool hasHeadings = false;
  while (reader.next(row) && !row.isQuoteOpen) {
    if (row.fields.size() == 1) continue;
    if (++rows <= mostRowsAbove) hasHeadings = hasHeadings || looksLikeHeadings(row.fields, captions);
    ++rowsByColumns[row.fields.size() - 1];
  }
  if (rows == 0) return {delimiter};
  const auto most = std::max_element(rowsByColumns.begin(), rowsByColumns.end(),
                                     [](const auto& a, const auto& b) { return a.second < b.second; });
  const double share = static_cast<double>(most->second) / static_cast<double>(rows);
  const std::size_t fewest = delimiter == ' ' ? 3 : 2;  // many Device IDs have a blank
  if (most->first < fewest || (share < leastShare && !hasHeadings)) return {delimiter};
  double worth = share * share * std::log2(static_cast<double>(most->first));
  if (hasHeadings) worth *= 4;
  const TquotedFields quoted = quotedFields(text, delimiter);
  if (quoted.closed > quoted.other) worth *= 3;
  return {delimiter, most->first, worth};
}

Ttrial bestOf(std::string_view text, std::string_view delimiters, const Tcaptions& captions) {
  Ttrial best;
  for (const char delimiter : delimiters) {
    const Ttrial trial = tried(text, delimiter, captions);
    if (trial.worth > best.worth) best = trial;
  }
  return best;
}

/// Excel's hint in the first line: "sep=;".
char toldDelimiter(std::string_view text) {
  constexpr std::string_view hint = "sep=";
  const bool isTold = text.size() > hint.size() && sameName(text.substr(0, hint.size()), hint) &&
                      text.find_first_of("\r\n") == hint.size() + 1;
  return isTold ? text[hint.size()] : '\0';
}

/// Whether a line is nothing but quoted texts, with one delimiter and any blanks between two of them.
bool isAllQuoted(std::string_view line, char delimiter) {
  line = trimmedText(line);
  while (line.size() > 1 && line.front() == '"') {
    const std::size_t close = line.find('"', 1);
    if (close == std::string_view::npos) return false;
    line = trimmedText(line.substr(close + 1));
    if (line.empty()) return true;
    if (line.front() != delimiter) return false;
    line = trimmedText(line.substr(1));
  }
  return false;
}

bool isEveryLineAllQuoted(std::string_view text, char delimiter) {
  std::istringstream file{std::string(text)};
  TlineReader lines(file);
  bool any = false;
  while (const auto line = lines.next()) {
    if (trimmedText(*line).empty()) continue;
    any = true;
    if (!isAllQuoted(*line, delimiter)) return false;
  }
  return any;
}

/// Whether a carriage return alone ends most lines.
bool endsWithReturns(std::string_view text) {
  std::size_t alone = 0;
  for (std::size_t at = text.find('\r'); at != std::string_view::npos; at = text.find('\r', at + 1)) {
    if (at + 1 == text.size() || text[at + 1] != '\n') ++alone;
  }
  return alone > static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

Tquoting quotingOf(std::string_view text, char delimiter) {
  const TquotedFields quoted = quotedFields(text, delimiter);
  if (quoted.other > 0 && isEveryLineAllQuoted(text, delimiter)) return Tquoting::allFields;
  return quoted.closed > quoted.other || endsWithReturns(text) ? Tquoting::spreadsheet : Tquoting::none;
}

}  // namespace

TtableShape TtableShape::of(std::string_view text, const Tcaptions& captions) {
  Ttrial best;
  const char told = toldDelimiter(text);
  for (const std::string_view delimiters : {std::string_view(&told, told == '\0' ? 0U : 1U), std::string_view("\t;|,"),
                                            std::string_view("^~"), std::string_view(" ")}) {
    if (best.columns < 2) best = bestOf(text, delimiters, captions);
  }
  return {best.delimiter, best.columns, quotingOf(text, best.delimiter)};
}
