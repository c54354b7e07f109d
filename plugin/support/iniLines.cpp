#include "support/iniLines.h"

#include "support/recordText.h"

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Where a key's line is, or where a new one belongs.
struct Tplace {
  std::size_t begin = 0;   ///< offset of the line's first byte, or of the place for a new line
  std::size_t length = 0;  ///< of the line without its end; 0 for a new line
  bool keyFound = false;
};

/// `text` without the blanks and zero bytes around it. Other control characters stay.
std::string_view withoutBlanks(std::string_view text) {
  constexpr std::string_view blanks(" \t\r\n\0", 5);
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// The line that begins at `offset`, without its end.
std::string_view lineAt(std::string_view content, std::size_t offset) {
  return content.substr(offset, content.find_first_of("\r\n", offset) - offset);
}

/// The offset of the line after the one that begins at `offset`; the length of `content` after the last line.
std::size_t nextLine(std::string_view content, std::size_t offset) {
  const std::size_t end = content.find_first_of("\r\n", offset);
  if (end == std::string_view::npos) return content.size();
  return end + (content.substr(end, 2) == "\r\n" ? 2 : 1);
}

/// The name in a section's heading line; nothing if the line is no heading.
std::optional<std::string_view> sectionName(std::string_view line) {
  if (line.starts_with(byteOrderMark)) line.remove_prefix(byteOrderMark.size());
  line = withoutBlanks(line);
  const std::size_t end = line.find(']');
  if (!line.starts_with('[') || end == std::string_view::npos) return std::nullopt;
  return withoutBlanks(line.substr(1, end - 1));
}

bool holdsKey(std::string_view line, std::string_view key) {
  line = withoutBlanks(line);
  const std::size_t equals = line.find('=');
  const bool comment = line.starts_with(';') || line.starts_with('#');
  return !comment && equals != std::string_view::npos && sameName(withoutBlanks(line.substr(0, equals)), key);
}

/// The key's line in any section of that name; otherwise the place after the last line with content in the first such
/// section; otherwise nothing.
std::optional<Tplace> findPlace(std::string_view content, std::string_view section, std::string_view key) {
  std::optional<Tplace> newLine;
  bool inside = false;
  bool insideFirst = false;
  for (std::size_t offset = 0; offset < content.size(); offset = nextLine(content, offset)) {
    const std::string_view line = lineAt(content, offset);
    if (const auto name = sectionName(line)) {
      inside = sameName(*name, section);
      insideFirst = inside && !newLine;
    }
    if (inside && holdsKey(line, key)) return Tplace{offset, line.size(), true};
    if (insideFirst && !withoutBlanks(line).empty()) newLine = Tplace{nextLine(content, offset), 0, false};
  }
  return newLine;
}

std::string_view lineEndOf(std::string_view content) {
  return content.find("\r\n") != std::string_view::npos ? "\r\n" : "\n";
}

bool endsInLineEnd(std::string_view content) {
  return content.empty() || content.back() == '\n' || content.back() == '\r';
}

}  // namespace

std::optional<std::string_view> iniValue(std::string_view content, std::string_view section, std::string_view key) {
  const auto place = findPlace(content, section, key);
  if (!place || !place->keyFound) return std::nullopt;
  const std::string_view line = content.substr(place->begin, place->length);
  return withoutBlanks(line.substr(line.find('=') + 1));
}

std::string withIniValue(std::string_view content, std::string_view section, std::string_view key,
                         std::string_view value) {
  const std::string lineEnd(lineEndOf(content));
  std::string entry = std::string(key).append("=").append(value);
  std::optional<Tplace> place = findPlace(content, section, key);
  std::string result(content);
  if (place && place->keyFound) return result.replace(place->begin, place->length, entry);

  entry += lineEnd;
  if (!place) {
    entry = std::string("[").append(section).append("]").append(lineEnd).append(entry);
    place = Tplace{content.size(), 0, false};
  }
  if (!endsInLineEnd(content.substr(0, place->begin))) entry.insert(0, lineEnd);
  return result.insert(place->begin, entry);
}
