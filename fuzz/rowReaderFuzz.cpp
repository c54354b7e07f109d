#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/fuzzTarget.h"
#include "import/rowReader.h"

namespace {

constexpr std::size_t chunk = 65536;
constexpr std::size_t paddingLine = 4000;
constexpr char paddingCharacter = 'x';
constexpr std::string_view bom = "\xEF\xBB\xBF";

struct Tseen {
  std::vector<std::string> fields;
  std::vector<std::pair<std::size_t, char32_t>> replaced;
  bool isCut = false;
  bool isQuoteOpen = false;
  bool hasOtherBreak = false;

  bool operator==(const Tseen&) const = default;
};

Tseen seen(const TimportRow& row) {
  std::size_t length = 0;
  for (const std::string_view field : row.fields) length += field.size();
  mustHold(!row.fields.empty() && row.fields[0].empty() && length <= TlineReader::longestLine);
  Tseen result{{row.fields.begin() + 1, row.fields.end()}, {}, row.isCut, row.isQuoteOpen, row.hasOtherBreak};
  for (const auto& [column, character] : row.replaced) {
    mustHold(column >= 1 && column < row.fields.size() && character >= 0x80);
    result.replaced.emplace_back(column, character);
  }
  return result;
}

std::vector<Tseen> rowsOf(const std::string& text, const TimportOptions& options) {
  std::istringstream file(text);
  TrowReader reader(file, options);
  std::vector<Tseen> rows;
  for (TimportRow row; reader.next(row);) rows.push_back(seen(row));
  mustHold(!reader.failed() && reader.number() == rows.size() && reader.position() == text.size());
  return rows;
}

std::string withoutEndMarks(std::string_view text) {
  return std::string(text.substr(0, text.find_last_not_of('\x1A') + 1));
}

void compareLines(const std::string& text, const TimportOptions& options, const std::vector<Tseen>& rows) {
  std::istringstream stream(withoutEndMarks(text));
  TlineReader reader(stream);
  for (const Tseen& row : rows) {
    const auto line = reader.next();
    mustHold(line.has_value());
    const TfieldList fields = tokenise(*line, options.delimiter, options.quotes);
    mustHold(std::equal(fields.begin() + 1, fields.end(), row.fields.begin(), row.fields.end()));
  }
  mustHold(!reader.next());
}

/// Takes a quoted field from the front of `rest`, up to the quote that closes it.
std::string takeQuotedField(std::string_view& rest, bool& isOpen) {
  std::size_t end = 1;
  while (end < rest.size() && (rest[end] != '"' || rest.substr(end, 2) == "\"\"")) end += rest[end] == '"' ? 2 : 1;
  isOpen = end >= rest.size();
  if (isOpen) end = std::min(rest.find_first_of("\r\n"), rest.size());
  std::string field;
  for (std::size_t i = 1; i < end; ++i) {
    const bool isBreak = rest[i] == '\r' || rest[i] == '\n';
    field += isBreak ? ' ' : rest[i];
    if (rest[i] == '"' || rest.substr(i, 2) == "\r\n") ++i;
  }
  rest.remove_prefix(std::min(isOpen ? end : end + 1, rest.size()));
  return field;
}

/// The same rows, one character at a time from the text in memory.
std::vector<Tseen> expectedRows(std::string_view rest, char delimiter) {
  if (rest.starts_with(bom)) rest.remove_prefix(bom.size());
  std::vector<Tseen> rows;
  while (!rest.empty()) {
    Tseen& row = rows.emplace_back();
    const auto atBreak = [&] { return rest.empty() || rest[0] == '\r' || rest[0] == '\n'; };
    for (bool more = !atBreak(); more;) {
      std::string& field = row.fields.emplace_back();
      if (delimiter != '"' && !rest.empty() && rest[0] == '"') field = takeQuotedField(rest, row.isQuoteOpen);
      for (; !atBreak() && rest[0] != delimiter; rest.remove_prefix(1)) field += rest[0];
      more = !atBreak();
      if (more) rest.remove_prefix(1);
    }
    rest.remove_prefix(std::min<std::size_t>(rest.starts_with("\r\n") ? 2 : 1, rest.size()));
  }
  return rows;
}

void cutRow(Tseen& row) {
  std::size_t room = TlineReader::longestLine;
  for (std::size_t i = 0; i < row.fields.size(); ++i) {
    row.isCut = i == TlineReader::longestLine || row.fields[i].size() > room;
    if (i < TlineReader::longestLine) row.fields[i].resize(std::min(row.fields[i].size(), room));
    room -= std::min(row.fields[i].size(), room);
    if (row.isCut) row.fields.resize(std::min(i + 1, TlineReader::longestLine));
  }
}

/// Rows before must not change the others, even if chunks then end elsewhere: here within the text.
void compareBehindPadding(const std::string& text, const TimportOptions& options, const std::vector<Tseen>& rows) {
  const std::size_t before = chunk - static_cast<unsigned char>(text[0]) % text.size();
  std::string filled(before, paddingCharacter);
  for (std::size_t i = before; i > 0; i -= std::min(i, paddingLine)) filled[i - 1] = '\n';
  const auto all = rowsOf(filled + text, options);
  mustHold(all.size() >= rows.size() && std::equal(rows.rbegin(), rows.rend(), all.rbegin()));
}

/// Whether the text means the same behind other rows.
bool canFollow(const std::string& text, const TimportOptions& options) {
  std::istringstream file(text);
  const bool isWide = options.charset == Tcharset::utf16 || detectCharset(file) == Tcharset::utf16;
  return !text.starts_with(bom) && !isWide && options.delimiter != paddingCharacter;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  TimportOptions options;
  options.delimiter = textOf(data, size)[0];
  options.spreadsheet = data[1] % 2 == 1;
  options.quotes = data[1] / 2 % 2 == 1;
  options.charset = charsetOf(data[1] / 4 % charsetCount);
  const std::string text(textOf(data + 2, size - 2));
  const auto rows = rowsOf(text, options);
  if (options.charset == Tcharset::windows1252 && !options.spreadsheet) compareLines(text, options, rows);
  if (options.charset == Tcharset::windows1252 && options.spreadsheet) {
    auto expected = expectedRows(withoutEndMarks(text), options.delimiter);
    for (Tseen& row : expected) cutRow(row);
    mustHold(rows == expected);
  }
  // It takes long, so that few inputs have it.
  if (size % 16 == 0 && !text.empty() && canFollow(text, options)) compareBehindPadding(text, options, rows);
  return 0;
}
