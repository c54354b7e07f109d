#include <cstdio>
#include <fstream>
#include <string>
#include <unistd.h>

#include "fuzz/fuzzTarget.h"
#include "support/iniFile.h"
#include "support/iniLines.h"

namespace {

/// A file for this process only, in memory if possible.
const std::filesystem::path& scratchFile() {
  static const std::filesystem::path path = [] {
    const std::filesystem::path memory = "/dev/shm";
    const auto folder = std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path();
    return folder / ("eqrec-fuzz-" + std::to_string(::getpid()) + ".ini");
  }();
  static const int removed = std::atexit([] { std::remove(scratchFile().c_str()); });
  mustHold(removed == 0);
  return path;
}

void write(std::string_view content) {
  std::ofstream(scratchFile(), std::ios::binary | std::ios::trunc) << content;
}

}  // namespace

/// A written value reads back, and nothing else in the file is lost.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view content = textOf(data, size);
  const TiniFile ini(scratchFile());
  write(content);
  const std::string other = ini.readString("OTHER", "B", "none");
  const int number = ini.readInteger("GRID", "A", -7);
  mustHold(number == -7 || !ini.readString("GRID", "A", "").empty());

  const std::string changed = withIniValue(content, "GRID", "A", "new value");
  write(changed);
  mustHold(ini.readString("GRID", "A", "none") == "new value");
  mustHold(ini.readString("OTHER", "B", "none") == other);
  mustHold(withIniValue(changed, "GRID", "A", "new value") == changed);
  return 0;
}
