#include <sstream>
#include <string>
#include <vector>

#include "fuzz/fuzzTarget.h"
#include "import/lineReader.h"

namespace {

constexpr std::size_t chunkSize = 65536;
constexpr std::size_t lineLength = 8000;

/// The same lines, split from the text in memory.
std::vector<std::string> expectedLines(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string line(text.substr(0, end));
    if (line.ends_with('\r')) line.pop_back();
    lines.push_back(line.substr(0, TlineReader::longestLine));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

void compare(const std::string& text) {
  std::istringstream stream(text);
  TlineReader reader(stream);
  for (const std::string& line : expectedLines(text)) {
    const auto read = reader.next();
    mustHold(read && *read == line);
  }
  mustHold(!reader.next() && reader.position() == text.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(textOf(data, size));
  compare(text);
  // The first byte may place the rest across the end of a chunk: after whole lines, or within a line that is too long.
  if (size < 2 || data[0] % 16 != 0) return 0;
  const std::size_t before = chunkSize - std::min<std::size_t>(data[0] / 16, size);
  std::string filled(before, 'x');
  for (std::size_t i = data[1] % 2 == 0 ? lineLength : before; i < before; i += lineLength) filled[i] = '\n';
  compare(filled + text);
  return 0;
}
