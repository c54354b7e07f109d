#include "import/importLine.h"

#include <charconv>
#include <string_view>

#include "import/columnMapping.h"
#include "support/recordText.h"

namespace {

/// The columns of a line as they enter a record.
class TcolumnTexts {
 public:
  explicit TcolumnTexts(const TfieldList& fields) : fields_(fields), plain_(isPlain(fields)) {}

  /// The result is valid until the next call. Nearly always it is the line's own text.
  std::string_view at(std::size_t column) {
    const std::string_view field = column < fields_.size() ? fields_[column] : std::string_view();
    if (plain_) return field;
    const std::string_view text = field.substr(0, field.find('\0'));
    if (text.size() < field.size()) cut_ = true;
    if (!holds(text, '"')) return text;
    return changed_ = withoutDoubleQuotes(text);
  }

  /// Whether a zero byte has cut any text so far.
  bool cut() const { return cut_; }

 private:
  static bool holds(std::string_view text, char c) { return text.find(c) != std::string_view::npos; }

  /// Whether the line holds neither zero bytes nor double quotes. Looking at the whole line at once is faster.
  static bool isPlain(const TfieldList& fields) {
    if (fields.size() < 2) return true;
    const char* begin = fields[1].data();
    const std::string_view line(begin, static_cast<std::size_t>(fields.back().data() + fields.back().size() - begin));
    return !holds(line, '\0') && !holds(line, '"');
  }

  const TfieldList& fields_;
  bool plain_;
  std::string changed_;
  bool cut_ = false;
};

bool setTestProc(TequipRec& record, std::string_view text) {
  text = trimmedText(text);
  unsigned number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && record.setTestProc(number);
}

}  // namespace

std::string importedText(const TfieldList& fields, std::size_t column) {
  return std::string(TcolumnTexts(fields).at(column));
}

std::optional<TequipRec> recordInLine(const TfieldList& fields, const TcolumnMapping& mapping, std::size_t columnCount,
                                      TlineFindings& findings) {
  const auto columnOf = [&mapping](std::size_t field) { return static_cast<std::size_t>(mapping.columns[field]); };
  TcolumnTexts texts(fields);
  const std::string_view deviceId = texts.at(columnOf(fieldControlNum));
  if (deviceId.empty()) return std::nullopt;

  if (fields.size() - 1 != columnCount) findings.malformed = true;
  if (deviceId.size() >= textField(fieldControlNum).size) findings.truncated = true;
  TequipRec record;
  record.setText(fieldControlNum, deviceId);
  for (int field = fieldControlNum + 1; field < fieldCount; ++field) {
    record.setText(field, texts.at(columnOf(static_cast<std::size_t>(field))));
  }
  const std::size_t testProc = columnOf(importTestProc);
  const bool numberTaken = testProc == 0 || setTestProc(record, texts.at(testProc));
  if (!numberTaken || texts.cut()) findings.malformed = true;
  return record;
}
