#include <string>
#include <string_view>
#include <variant>

#include "fuzz/fuzzTarget.h"
#include "store/unsavedFormat.h"
#include "support/checksum.h"

namespace {

std::string bytesOf(std::uint32_t number) {
  std::string bytes;
  for (const int shift : {0, 8, 16, 24}) bytes += static_cast<char>(number >> shift & 0xFFU);
  return bytes;
}

/// Entries made of pieces of the input, each behind one byte with its length, so that checksums do not stop the engine.
std::string withChecksums(std::string_view input) {
  std::string bytes;
  while (!input.empty()) {
    const std::string_view entry = input.substr(1, static_cast<unsigned char>(input.front()));
    input.remove_prefix(entry.size() + 1);
    if (entry.starts_with('R')) {
      bytes += restartEntry({}, withChecksums(entry.substr(1)));
    } else {
      bytes += bytesOf(static_cast<std::uint32_t>(entry.size())) + bytesOf(crc32Of(entry));
      bytes += entry;
    }
  }
  return bytes;
}

std::string entriesOf(const TunsavedContent& content) {
  std::string entries;
  for (const TunsavedEntry& entry : content.entries) {
    const auto* edits = std::get_if<TlistEdits>(&entry);
    entries += edits != nullptr ? editsEntry(*edits) : savingEntry(std::get<TpairSums>(entry));
  }
  return entries;
}

/// What was read and is written again must read the same.
void check(std::string_view bytes) {
  TunsavedContent content;
  if (readUnsaved(bytes, content) != TunsavedShape::whole) return;
  const std::string entries = entriesOf(content);
  TunsavedContent again;
  const std::string written = unsavedHeader(content.id, content.listName) + restartEntry(content.absorbed, entries);
  mustHold(readUnsaved(written, again) == TunsavedShape::whole);
  mustHold(again.id == content.id && again.listName == content.listName && again.absorbed == content.absorbed);
  mustHold(entriesOf(again) == entries);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  check(textOf(data, size));
  check(unsavedHeader("0123456789abcdef", "list") + withChecksums(textOf(data, size)));
  return 0;
}
