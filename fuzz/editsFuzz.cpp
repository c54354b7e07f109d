#include <utility>

#include "fuzz/fuzzTarget.h"
#include "store/joinLists.h"

namespace {

/// Joins the edits, whatever they say about the list that they come from, and once more.
void join(TlistEdits edits) {
  std::vector<TequipRec> records;
  for (const TlistEdit& edit : edits) records.push_back(edit.was ? *edit.was : *edit.became);
  TequipRecTable table(std::move(records));
  const TlistEdits ours = netEdits(std::move(edits));
  for (int i = 0; i < 2; ++i) applyChange(table, joinLists(table, ours).change);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = textOf(data, size);
  std::optional<TlistEdits> edits = decodedEdits(bytes);
  if (!edits) return 0;
  mustHold(encodedEdits(*edits) == bytes);
  join(std::move(*edits));
  return 0;
}
