#include <string>

#include "fuzz/fuzzTarget.h"
#include "store/erException.h"
#include "store/lineGrammars.h"
#include "store/recordLines.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  TdataList list;
  list.content = textOf(data, size);
  try {
    readDataLines(list, 4);
  } catch (const TERException&) {
    mustHold(list.entries.size() == 5);
  }
  mustHold(list.entries.size() == list.fileLines.size());
  for (const _EQDAT& entry : list.entries) {
    const std::string line = '"' + std::string(entry.controlNum) + "\"," + std::to_string(entry.testProc);
    _EQDAT again;
    mustHold(parseDataLine(line, again) && again.controlNum == entry.controlNum && again.testProc == entry.testProc);
  }
  return 0;
}
