#include "import/suggestion.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <sstream>

#include "import/headings.h"
#include "import/rowReader.h"
#include "import/tableShape.h"

namespace {

constexpr int mostRowsBefore = 20;  // a title and the like, above the headings

constexpr std::array<const char*, otherDelimiter> delimiterNames = {"Comma", "Space", "Tab", "Vertical Pipe",
                                                                    "Semi-Colon"};
constexpr std::array<const char*, charsetCount> charsetNames = {"", "Windows-1252", "UTF-8", "UTF-16"};

/// A character that is cut at the end of the start must not count against UTF-8.
std::string_view withoutCutCharacter(std::string_view start) {
  constexpr std::size_t longest = 3;
  if (start.size() < fileStartSize) return start;
  std::size_t size = start.size();
  while (start.size() - size < longest && static_cast<unsigned char>(start[size - 1]) >= 0x80) --size;
  return start.substr(0, size);
}

Tcharset charsetOfStart(std::string_view start) {
  const bool isAscii =
      std::all_of(start.begin(), start.end(), [](char c) { return c != '\0' && static_cast<unsigned char>(c) < 0x80; });
  std::istringstream file{std::string(withoutCutCharacter(start))};
  return isAscii ? Tcharset::automatic : detectCharset(file);
}

/// The start in Windows-1252, up to its last whole line.
std::string decoded(std::string_view start, Tcharset charset) {
  std::istringstream file{std::string(start)};
  TdecodedFile buffer(file, charset);
  std::string text{std::istreambuf_iterator<char>(&buffer), {}};
  if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);
  if (start.size() < fileStartSize) return text;
  const std::size_t end = text.find_last_of("\r\n");
  return text.substr(0, end == std::string::npos ? text.size() : end + 1);
}

void setDelimiter(TimportSuggestion& suggestion, char delimiter) {
  int index = 0;
  while (index < otherDelimiter && delimiterCharacter(index, {}) != delimiter) ++index;
  suggestion.delimiter = index;
  if (index == otherDelimiter) suggestion.userDelimiter = delimiter;
}

/// Looks for the headings as the import will read the file.
void findHeadings(TimportSuggestion& suggestion, std::string_view start, const Tcaptions& captions) {
  const TimportOptions options{{},
                               delimiterCharacter(suggestion.delimiter, suggestion.userDelimiter),
                               1,
                               suggestion.quotes,
                               suggestion.spreadsheet,
                               suggestion.charset};
  std::istringstream file{std::string(start)};
  TrowReader reader(file, options);
  TimportRow row;
  for (int number = 1; number <= mostRowsBefore && reader.next(row); ++number) {
    if (!looksLikeHeadings(row.fields, captions)) continue;
    suggestion.hasHeadings = true;
    suggestion.startRow = number + 1;
    return;
  }
}

}  // namespace

std::optional<TimportSuggestion> TimportSuggestion::of(std::string_view start, const Tcaptions& captions) {
  TimportSuggestion suggestion;
  suggestion.charset = charsetOfStart(start);
  const std::string text = decoded(start, suggestion.charset);
  const TtableShape shape = TtableShape::of(text, captions);
  setDelimiter(suggestion, shape.delimiter);
  suggestion.quotes = shape.quoting == Tquoting::allFields;
  suggestion.spreadsheet = shape.quoting == Tquoting::spreadsheet;
  findHeadings(suggestion, start, captions);
  const bool isTable = shape.columns > 1 || suggestion.hasHeadings;
  return isTable ? std::optional(suggestion) : std::nullopt;
}

std::string TimportSuggestion::text() const {
  std::string text = delimiter == otherDelimiter ? "Other (" + userDelimiter + ")"
                                                 : std::string(delimiterNames.at(static_cast<std::size_t>(delimiter)));
  if (quotes) text += ", every field in quotes";
  if (spreadsheet) text += ", quotes as spreadsheets write them";
  if (charset != Tcharset::automatic) text += std::string(", ") + charsetNames.at(static_cast<std::size_t>(charset));
  if (hasHeadings) text += ", headings in row " + std::to_string(startRow - 1);
  return text;
}

bool TimportSuggestion::isSetIn(const TimportChoices& choices) const {
  const char character = delimiterCharacter(delimiter, userDelimiter);
  const bool sameDelimiter = delimiterCharacter(choices.delimiter, choices.userDelimiter) == character;
  const bool sameQuotes = choices.spreadsheet == spreadsheet && (spreadsheet || choices.quotes == quotes);
  const Tcharset set = charsetOf(choices.charset);
  const bool sameCharset =
      set == Tcharset::automatic || set == charset || (charset == Tcharset::automatic && set != Tcharset::utf16);
  return sameDelimiter && sameQuotes && sameCharset && (!hasHeadings || choices.startRow == startRow);
}

void TimportSuggestion::setIn(TimportChoices& choices) const {
  choices.delimiter = delimiter;
  if (delimiter == otherDelimiter) choices.userDelimiter = userDelimiter;
  choices.quotes = quotes;
  choices.spreadsheet = spreadsheet;
  if (charsetOf(choices.charset) != Tcharset::automatic) choices.charset = static_cast<int>(charset);
  choices.startRow = startRow;
}
