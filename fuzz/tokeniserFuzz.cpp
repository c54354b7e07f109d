#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/fuzzTarget.h"
#include "import/columnMapping.h"
#include "import/importLine.h"
#include "import/tokeniser.h"

namespace {

/// The fields, extracted one character at a time.
std::vector<std::string> expectedFields(std::string_view line, char delimiter, bool quotes) {
  std::vector<std::string> fields(1);
  bool open = !quotes;
  std::string field;
  for (const char c : line) {
    const bool ends = open && c == (quotes ? '"' : delimiter);
    if (ends) fields.push_back(std::exchange(field, {}));
    if (quotes && c == '"') {
      open = !open;
    } else if (!ends && open) {
      field += c;
    }
  }
  if (!quotes && !field.empty()) fields.push_back(field);
  return fields;
}

void checkRecord(const TequipRec& record) {
  mustHold(*record.text(fieldControlNum) != '\0');
  mustHold(record.testProc() >= minTestProc && record.testProc() <= maxTestProc);
  for (int field = 0; field < fieldCount; ++field) {
    const std::string_view text = record.text(field);
    mustHold(text.size() < textField(field).size && text.find('"') == std::string_view::npos);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const char delimiter = textOf(data, size)[0];
  const bool quotes = data[1] % 2 == 1;
  const std::string_view line = textOf(data + 2, size - 2);
  const TfieldList fields = tokenise(line, delimiter, quotes);
  const auto expected = expectedFields(line, delimiter, quotes);
  mustHold(std::equal(fields.begin(), fields.end(), expected.begin(), expected.end()));

  const int columns = static_cast<int>(fields.size()) + 1;
  TcolumnMapping mapping;
  for (std::size_t i = 0; i < importFieldCount; ++i) mapping.columns[i] = (data[1] + static_cast<int>(i)) % columns;
  TimportRow row;
  row.fields = fields;
  const TimportedRow made = recordInRow(row, mapping, 3);
  if (made.hasDeviceId()) checkRecord(made.record);
  for (const int column : TcolumnMapping::fromHeadings(fields, {}).columns) mustHold(column < columns - 1);
  return 0;
}
