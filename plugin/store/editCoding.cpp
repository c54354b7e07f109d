#include <algorithm>

#include "store/recordEdits.h"

// The number of text fields (1 byte) and of edits (4), then each edit: its kind (1), the three counts (4 each), the
// record that it was and the one that it became. A record is its texts, each behind its length (1), and the number of
// its test procedure (2). Numbers are little-endian.

namespace {

constexpr std::uint32_t hasBecome = 1;
constexpr std::uint32_t hasBeen = 2;

static_assert(std::all_of(textFields.begin(), textFields.end(), [](const auto& field) { return field.size <= 256; }),
              "The length of a text takes one byte");
static_assert(fieldCount < 256, "The number of fields takes one byte");

void write(std::string& bytes, std::uint32_t number, int size) {
  for (; size > 0; --size, number >>= 8U) bytes += static_cast<char>(number & 0xFFU);
}

void write(std::string& bytes, const TequipRec& record) {
  for (const TtextField& field : textFields) {
    const std::string_view text = record.text(field.id);
    write(bytes, static_cast<std::uint32_t>(text.size()), 1);
    bytes += text;
  }
  write(bytes, record.testProc(), 2);
}

void write(std::string& bytes, const TlistEdit& edit) {
  write(bytes, (edit.became ? hasBecome : 0) | (edit.was ? hasBeen : 0), 1);
  for (const std::uint32_t count : {edit.alike, edit.sameNumber, edit.sameContent}) write(bytes, count, 4);
  if (edit.was) write(bytes, *edit.was);
  if (edit.became) write(bytes, *edit.became);
}

/// Reads what `write` writes. Once something is wrong, it reads zeros and empty texts.
class TeditReader {
 public:
  explicit TeditReader(std::string_view bytes) : rest_(bytes) {}

  bool isGood() const { return good_; }
  bool atEnd() const { return rest_.empty(); }

  std::uint32_t number(std::size_t size) {
    std::uint32_t number = 0;
    const std::string_view bytes = take(size);
    for (std::size_t i = bytes.size(); i > 0; --i) number = number << 8U | static_cast<unsigned char>(bytes[i - 1]);
    return number;
  }

  TequipRec record() {
    TequipRec record;
    for (const TtextField& field : textFields) {
      const std::string_view text = take(number(1));
      require(text.size() < field.size && text.find('\0') == std::string_view::npos);
      record.setText(field.id, text);
    }
    require(record.setTestProc(number(2)));
    return record;
  }

  TlistEdit edit() {
    TlistEdit edit;
    const std::uint32_t kind = number(1);
    require(kind >= hasBecome && kind <= (hasBecome | hasBeen));
    for (std::uint32_t* count : {&edit.alike, &edit.sameNumber, &edit.sameContent}) *count = number(4);
    if ((kind & hasBeen) != 0) edit.was = record();
    if ((kind & hasBecome) != 0) edit.became = record();
    return edit;
  }

 private:
  void require(bool holds) {
    if (holds) return;
    good_ = false;
    rest_ = {};
  }

  std::string_view take(std::size_t size) {
    require(size <= rest_.size());
    const std::string_view taken = rest_.substr(0, size);
    rest_.remove_prefix(taken.size());
    return taken;
  }

  std::string_view rest_;
  bool good_ = true;
};

}  // namespace

std::string encodedEdits(const TlistEdits& edits) {
  std::string bytes;
  write(bytes, fieldCount, 1);
  write(bytes, static_cast<std::uint32_t>(edits.size()), 4);
  for (const TlistEdit& edit : edits) write(bytes, edit);
  return bytes;
}

std::optional<TlistEdits> decodedEdits(std::string_view bytes) {
  TeditReader reader(bytes);
  if (reader.number(1) != fieldCount) return std::nullopt;
  const std::uint32_t count = reader.number(4);
  TlistEdits edits;
  while (edits.size() < count && reader.isGood()) edits.push_back(reader.edit());
  if (!reader.isGood() || !reader.atEnd()) return std::nullopt;
  return edits;
}
