#include "store/unsavedFormat.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <random>
#include <utility>

#include "support/checksum.h"

namespace {

constexpr std::string_view magic = "EQUNSAVED1\n";
constexpr std::string_view hexDigits = "0123456789abcdef";

constexpr char listKind = 'L';
constexpr char editsKind = 'E';
constexpr char savingKind = 'S';
constexpr char restartKind = 'R';

void write(std::string& bytes, std::uint64_t number, int size) {
  for (; size > 0; --size, number >>= 8U) bytes += static_cast<char>(number & 0xFFU);
}

std::string entry(char kind, std::string_view payload) {
  const std::string_view kindByte(&kind, 1);
  std::string bytes;
  bytes.reserve(payload.size() + 9);
  write(bytes, payload.size() + 1, 4);
  write(bytes, crc32Of(payload, crc32Of(kindByte)), 4);
  bytes += kindByte;
  return bytes += payload;
}

/// Takes bytes off a text. Taking more than there are takes nothing, and fails from then on.
class TbyteReader {
 public:
  explicit TbyteReader(std::string_view bytes) : rest_(bytes) {}

  bool isGood() const { return good_; }
  std::string_view rest() const { return rest_; }

  std::string_view take(std::size_t size) {
    good_ = good_ && size <= rest_.size();
    if (!good_) return {};
    const std::string_view taken = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return taken;
  }
  std::uint64_t number(std::size_t size) {
    std::uint64_t number = 0;
    const std::string_view bytes = take(size);
    for (std::size_t i = bytes.size(); i > 0; --i) number = number << 8U | static_cast<unsigned char>(bytes[i - 1]);
    return number;
  }

 private:
  std::string_view rest_;
  bool good_ = true;
};

/// Kind and payload of the next entry; nothing if it is not whole. Zeros, which a loss of power may leave at the end
/// of a file, are no entry.
std::optional<std::string_view> nextEntry(TbyteReader& reader) {
  const auto length = static_cast<std::size_t>(reader.number(4));
  const auto crc = static_cast<std::uint32_t>(reader.number(4));
  const std::string_view body = reader.take(length);
  const bool isWhole = reader.isGood() && length > 0 && crc32Of(body) == crc;
  return isWhole ? std::optional(body) : std::nullopt;
}

bool isId(std::string_view text) {
  return text.size() == unsavedIdLength && text.find_first_not_of(hexDigits) == std::string_view::npos;
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
      content_.absorbed.emplace_back(reader.take(unsavedIdLength));
      if (!isId(content_.absorbed.back())) return false;
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
  if (body->front() != listKind || !isId(body->substr(1, unsavedIdLength))) return TunsavedShape::foreign;
  content.id = body->substr(1, unsavedIdLength);
  content.listName = body->substr(1 + unsavedIdLength);
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
    write(payload, sum.length, 8);
    write(payload, sum.crc, 4);
  }
  return entry(savingKind, payload);
}

std::string restartEntry(const std::vector<std::string>& absorbed, std::string_view entries) {
  std::string payload;
  write(payload, absorbed.size(), 4);
  for (const std::string& id : absorbed) payload += id;
  return entry(restartKind, payload.append(entries));
}

std::string newUnsavedId() {
  std::random_device random;
  std::uniform_int_distribution<std::size_t> digit(0, hexDigits.size() - 1);
  std::string id;
  while (id.size() < unsavedIdLength) id += hexDigits[digit(random)];
  return id;
}
