#include "store/unsavedFormat.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "support/checksum.h"
#include "support/littleEndian.h"
#include "support/randomName.h"

namespace {

constexpr std::string_view magic = "EQUNSAVED1\n";

constexpr char listKind = 'L';
constexpr char editsKind = 'E';
constexpr char savingKind = 'S';
constexpr char restartKind = 'R';

std::string entry(char kind, std::string_view payload) {
  const std::string_view kindByte(&kind, 1);
  std::string bytes;
  bytes.reserve(payload.size() + 9);
  appendLittleEndian(bytes, payload.size() + 1, 4);
  appendLittleEndian(bytes, crc32Of(payload, crc32Of(kindByte)), 4);
  bytes += kindByte;
  return bytes += payload;
}

/// Kind and payload of the next entry; nothing if it is not whole. Zeros, which a loss of power may leave at the end
/// of a file, are no entry.
std::optional<std::string_view> nextEntry(TbyteReader& reader) {
  const auto length = static_cast<std::size_t>(reader.number(4));
  const auto crc = static_cast<std::uint32_t>(reader.number(4));
  const std::string_view body = reader.take(length);
  const bool isWhole = reader.isGood() && length > 0 && crc32Of(body) == crc;
  return isWhole ? std::optional(body) : std::nullopt;
}

bool readSums(std::string_view payload, TpairSums& sums) {
  TbyteReader reader(payload);
  for (TfileSum* sum : {&sums.data, &sums.info}) {
    sum->length = reader.number(8);
    sum->crc = static_cast<std::uint32_t>(reader.number(4));
  }
  return reader.isGood() && reader.rest().empty();
}

/// Reads the entries of a file. Each function returns false if an entry is whole but has no known meaning.
class TentryReader {
 public:
  explicit TentryReader(TunsavedContent& content) : content_(content) {}

  bool readFile(std::string_view bytes) {
    TbyteReader reader(bytes);
    while (const auto body = nextEntry(reader)) {
      const bool isKnown = body->front() == restartKind ? readRestart(body->substr(1)) : readEntry(*body);
      if (!isKnown) return false;
    }
    return true;
  }

  bool readAll(std::string_view bytes) {
    TbyteReader reader(bytes);
    while (!reader.rest().empty()) {
      const auto body = nextEntry(reader);
      if (!body || !readEntry(*body)) return false;
    }
    return true;
  }

 private:
  bool readEntry(std::string_view body) {
    const std::string_view payload = body.substr(1);
    if (body.front() == savingKind) {
      TpairSums sums;
      const bool isWhole = readSums(payload, sums);
      content_.entries.emplace_back(sums);
      return isWhole;
    }
    auto edits = body.front() == editsKind ? decodedEdits(payload) : std::nullopt;
    if (!edits) return false;
    content_.entries.emplace_back(std::move(*edits));
    return true;
  }

  bool readRestart(std::string_view payload) {
    content_.entries.clear();
    TbyteReader reader(payload);
    for (auto count = reader.number(4); count > 0 && reader.isGood(); --count) {
      content_.absorbed.emplace_back(reader.take(randomNameLength));
      if (!isRandomName(content_.absorbed.back())) return false;
    }
    return reader.isGood() && readAll(reader.rest());
  }

  TunsavedContent& content_;
};

/// Takes the header off. The id is left empty unless the header is whole and known.
TunsavedShape readHeader(TbyteReader& reader, TunsavedContent& content) {
  if (magic.starts_with(reader.rest())) return TunsavedShape::torn;
  if (reader.take(magic.size()) != magic) return TunsavedShape::foreign;
  const auto body = nextEntry(reader);
  if (!body) return reader.isGood() ? TunsavedShape::foreign : TunsavedShape::torn;
  if (body->front() != listKind || !isRandomName(body->substr(1, randomNameLength))) return TunsavedShape::foreign;
  content.id = body->substr(1, randomNameLength);
  content.listName = body->substr(1 + randomNameLength);
  return TunsavedShape::whole;
}

void appendMoved(TlistEdits& edits, TlistEdits&& more) {
  edits.insert(edits.end(), std::move_iterator(more.begin()), std::move_iterator(more.end()));
}

}  // namespace

TlistEdits TunsavedContent::editsNotIn(const TpairSums& sums) const {
  const auto isHeld = [&](const TunsavedEntry& entry) {
    const auto* saved = std::get_if<TpairSums>(&entry);
    return saved != nullptr && saved->data == sums.data && saved->info == sums.info;
  };
  TlistEdits result;
  for (auto entry = std::find_if(entries.rbegin(), entries.rend(), isHeld).base(); entry != entries.end(); ++entry) {
    if (const auto* edits = std::get_if<TlistEdits>(&*entry)) appendMoved(result, TlistEdits(*edits));
  }
  return result;
}

TunsavedShape readUnsaved(std::string_view bytes, TunsavedContent& content) {
  TbyteReader reader(bytes);
  const TunsavedShape shape = readHeader(reader, content);
  if (shape != TunsavedShape::whole) return shape;
  return TentryReader(content).readFile(reader.rest()) ? TunsavedShape::whole : TunsavedShape::foreign;
}

TlistEdits editsIn(std::string_view entries) {
  TunsavedContent content;
  TentryReader(content).readAll(entries);
  TlistEdits result;
  for (TunsavedEntry& entry : content.entries) {
    if (auto* edits = std::get_if<TlistEdits>(&entry)) appendMoved(result, std::move(*edits));
  }
  return result;
}

std::string unsavedHeader(std::string_view id, std::string_view listName) {
  return std::string(magic) + entry(listKind, std::string(id).append(listName));
}

std::string editsEntry(const TlistEdits& edits) {
  return entry(editsKind, encodedEdits(edits));
}

std::string savingEntry(const TpairSums& sums) {
  std::string payload;
  for (const TfileSum& sum : {sums.data, sums.info}) {
    appendLittleEndian(payload, sum.length, 8);
    appendLittleEndian(payload, sum.crc, 4);
  }
  return entry(savingKind, payload);
}

std::string restartEntry(const std::vector<std::string>& absorbed, std::string_view entries) {
  std::string payload;
  appendLittleEndian(payload, absorbed.size(), 4);
  for (const std::string& id : absorbed) payload += id;
  return entry(restartKind, payload.append(entries));
}
