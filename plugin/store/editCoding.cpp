#include <algorithm>

#include "store/recordEdits.h"
#include "support/littleEndian.h"

// The number of text fields (1 byte) and of edits (4), then each edit: its kind (1), the three counts (4 each), the
// record that it was and the one that it became. A record is its texts, each behind its length (1), and the number of
// its test procedure (2). Numbers are little-endian.

namespace {

constexpr std::uint32_t hasBecome = 1;
constexpr std::uint32_t hasBeen = 2;

static_assert(std::all_of(textFields.begin(), textFields.end(), [](const auto& field) { return field.size <= 256; }),
              "The length of a text takes one byte");
static_assert(fieldCount < 256, "The number of fields takes one byte");

void write(std::string& bytes, const TequipRec& record) {
  for (const TtextField& field : textFields) {
    const std::string_view text = record.text(field.id);
    appendLittleEndian(bytes, text.size(), 1);
    bytes += text;
  }
  appendLittleEndian(bytes, record.testProc(), 2);
}

void write(std::string& bytes, const TlistEdit& edit) {
  appendLittleEndian(bytes, (edit.became ? hasBecome : 0) | (edit.was ? hasBeen : 0), 1);
  for (const std::uint32_t count : {edit.alike, edit.sameNumber, edit.sameContent}) appendLittleEndian(bytes, count, 4);
  if (edit.was) write(bytes, *edit.was);
  if (edit.became) write(bytes, *edit.became);
}

TequipRec readRecord(TbyteReader& reader) {
  TequipRec record;
  for (const TtextField& field : textFields) {
    const std::string_view text = reader.take(reader.number(1));
    reader.require(text.size() < field.size && text.find('\0') == std::string_view::npos);
    if (reader.isGood()) record.setText(field.id, text);
  }
  reader.require(record.setTestProc(static_cast<unsigned>(reader.number(2))));
  return record;
}

TlistEdit readEdit(TbyteReader& reader) {
  TlistEdit edit;
  const std::uint64_t kind = reader.number(1);
  reader.require(kind >= hasBecome && kind <= (hasBecome | hasBeen));
  for (std::uint32_t* count : {&edit.alike, &edit.sameNumber, &edit.sameContent}) {
    *count = static_cast<std::uint32_t>(reader.number(4));
  }
  if ((kind & hasBeen) != 0) edit.was = readRecord(reader);
  if ((kind & hasBecome) != 0) edit.became = readRecord(reader);
  return edit;
}

}  // namespace

std::string encodedEdits(const TlistEdits& edits) {
  std::string bytes;
  appendLittleEndian(bytes, fieldCount, 1);
  appendLittleEndian(bytes, edits.size(), 4);
  for (const TlistEdit& edit : edits) write(bytes, edit);
  return bytes;
}

std::optional<TlistEdits> decodedEdits(std::string_view bytes) {
  TbyteReader reader(bytes);
  if (reader.number(1) != fieldCount) return std::nullopt;
  const std::uint64_t count = reader.number(4);
  TlistEdits edits;
  while (edits.size() < count && reader.isGood()) edits.push_back(readEdit(reader));
  if (!reader.isGood() || !reader.rest().empty()) return std::nullopt;
  return edits;
}
