#include "import/importLine.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "import/columnMapping.h"
#include "support/recordText.h"

namespace {

/// A field of a row as it enters a record.
struct TfieldText {
  std::string_view text;
  bool isCut = false;   ///< at a zero byte
  std::string changed;  ///< what `text` shows if it is not the row's own
};

/// Whether a character cannot stay in a record: control characters and double quotes.
constexpr bool isCleaned(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < ' ' || byte == '"' || byte == 0x7F;
}

constexpr std::uint64_t eachByte = 0x0101010101010101;

/// Whether any of eight bytes is less than a limit of at most 0x80.
constexpr bool hasLess(std::uint64_t bytes, std::uint64_t limit) {
  return ((bytes - eachByte * limit) & ~bytes & (eachByte << 7U)) != 0;
}

constexpr bool hasByte(std::uint64_t bytes, unsigned char byte) {
  return hasLess(bytes ^ (eachByte * byte), 1);
}

/// As above, for eight characters at once.
bool areCleaned(const char* eight) {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, eight, sizeof bytes);
  return hasLess(bytes, ' ') || hasByte(bytes, '"') || hasByte(bytes, 0x7F);
}

bool needsCleaning(std::string_view text) {
  constexpr std::size_t atOnce = sizeof(std::uint64_t);
  if (text.size() < atOnce) return std::any_of(text.begin(), text.end(), isCleaned);
  for (std::size_t i = 0; i + atOnce < text.size(); i += atOnce) {
    if (areCleaned(text.data() + i)) return true;
  }
  return areCleaned(text.data() + text.size() - atOnce);
}

void makeText(TfieldText& made, std::string_view text, std::size_t field) {
  made.text = text;
  made.isCut = false;
  if (needsCleaning(text)) {
    made.text = text.substr(0, text.find('\0'));
    made.isCut = made.text.size() < text.size();
    // A number with a control character within is unreadable; without it, it might be another number.
    if (field != importTestProc) made.text = made.changed = withoutDoubleQuotes(withoutControls(made.text));
  }
  if (field == fieldControlNum) made.text = withoutBlanks(made.text);
}

bool setTestProc(TequipRec& record, std::string_view text) {
  text = trimmedText(text);
  unsigned number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && record.setTestProc(number);
}

/// Takes the fields of one row into a record, and notes what it finds.
class TrecordMaker {
 public:
  TrecordMaker(const TimportRow& row, TimportedRow& made) : row_(row), made_(made) {}

  bool takeDeviceId(std::size_t column) {
    take(fieldControlNum, column);
    if (made_.hasDeviceId()) return true;
    made_.findings.clear();
    if (!isBlank()) add(TremarkKind::noDeviceId);
    return false;
  }

  void take(std::size_t field, std::size_t column) {
    const bool isThere = column > 0 && column < row_.fields.size();
    made_.isGiven[field] = isThere;
    if (!isThere) return;
    makeText(text_, row_.fields[column], field);
    if (text_.isCut) add(TremarkKind::cutAtZero, field, std::string(text_.text));
    if (!row_.replaced.empty()) lookForReplaced(field, column);
    field == importTestProc ? takeNumber() : takeText(field);
  }

  void lookAtRow(std::size_t columnCount) {
    const std::size_t count = row_.fields.size() - 1;
    if (row_.hasOtherBreak) add(TremarkKind::otherBreak);
    if (row_.isCut) add(TremarkKind::rowCut);
    if (row_.isQuoteOpen) add(TremarkKind::quoteNotClosed);
    if (count == columnCount) return;
    add(TremarkKind::otherFieldCount, importFieldCount,
        std::to_string(count) + " instead of " + std::to_string(columnCount));
  }

 private:
  /// Whether the row holds nothing, as those that spreadsheets write for formatted cells.
  bool isBlank() const {
    const bool isWhole = !row_.isCut && !row_.isQuoteOpen;
    return isWhole && std::all_of(row_.fields.begin(), row_.fields.end(),
                                  [](std::string_view field) { return withoutBlanks(field).empty(); });
  }

  void takeText(std::size_t field) {
    const int id = static_cast<int>(field);
    made_.record.setText(id, text_.text);
    if (text_.text.size() < textField(id).size) return;
    add(field == fieldControlNum ? TremarkKind::deviceIdCut : TremarkKind::fieldCut, field, std::string(text_.text));
  }

  void takeNumber() {
    const bool isRead = setTestProc(made_.record, text_.text);
    made_.isGiven[importTestProc] = isRead;
    if (!isRead) add(TremarkKind::procedureUnreadable, importTestProc, std::string(text_.text));
  }

  void lookForReplaced(std::size_t field, std::size_t column) {
    std::u32string characters;
    for (const TreplacedCharacter& replaced : row_.replaced) {
      const bool isNew = characters.find(replaced.character) == std::u32string::npos;
      if (replaced.column == column && isNew) characters += replaced.character;
    }
    if (!characters.empty()) made_.findings.push_back({TremarkKind::characterReplaced, field, {}, characters});
  }

  void add(TremarkKind kind, std::size_t field = importFieldCount, std::string was = {}) {
    made_.findings.push_back({kind, field, std::move(was), {}});
  }

  const TimportRow& row_;
  TimportedRow& made_;
  TfieldText text_;
};

}  // namespace

std::string_view withoutBlanks(std::string_view deviceId) {
  constexpr std::string_view blanks = " \t";
  deviceId.remove_prefix(std::min(deviceId.find_first_not_of(blanks), deviceId.size()));
  return deviceId.substr(0, deviceId.find_last_not_of(blanks) + 1);
}

std::string importedText(const TfieldList& fields, std::size_t column, std::size_t field) {
  TfieldText made;
  makeText(made, column < fields.size() ? fields[column] : std::string_view(), field);
  return std::string(made.text);
}

bool TimportedRow::has(TremarkKind kind) const {
  return std::any_of(findings.begin(), findings.end(), [kind](auto& finding) { return finding.kind == kind; });
}

TimportedRow recordInRow(const TimportRow& row, const TcolumnMapping& mapping, std::size_t columnCount,
                         TimportedRow used) {
  const auto columnOf = [&mapping](std::size_t field) { return static_cast<std::size_t>(mapping.columns[field]); };
  TimportedRow made{{}, {}, std::move(used.findings)};
  made.findings.clear();
  TrecordMaker maker(row, made);
  if (!maker.takeDeviceId(columnOf(fieldControlNum))) return made;
  for (std::size_t field = fieldControlNum + 1; field < importFieldCount; ++field) {
    maker.take(field, columnOf(field));
  }
  maker.lookAtRow(columnCount);
  return made;
}
