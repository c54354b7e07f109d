#include <string>

#include "fuzz/fuzzTarget.h"
#include "store/erException.h"
#include "store/lineGrammars.h"
#include "store/recordLines.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  TinfoList list;
  list.content = textOf(data, size);
  try {
    readInfoLines(list, 4);
  } catch (const TERException&) {
    mustHold(list.entries.size() == 5);
  }
  mustHold(list.entries.size() == list.fileLines.size());
  for (const _EQINFO& entry : list.entries) {
    std::string line;
    for (const std::string_view text : entry.texts) line.append(line.empty() ? "\"" : ",\"").append(text).append("\"");
    _EQINFO again;
    mustHold(parseInfoLine(line, again) && again.texts == entry.texts);
  }
  return 0;
}
