// Imports a file and prints the most memory that this process has had, in kB as the system counts it. It is a process
// of its own because that includes everything before. Usage: eqrec-big-import FILE
#include <cstdio>
#include <fstream>
#include <string>

#include "bench/bareImport.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const TequipRecTable none;
  TeverOnward observer;
  const TimportRun run = runImport(optionsOfSpreadsheet(argv[1]), eachColumn, importColumns, none, observer);
  if (run.end != TimportRun::Tend::done) return 1;

  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    constexpr std::string_view name = "VmHWM:";
    if (line.starts_with(name)) std::printf("%zu %ld\n", run.rows, std::stol(line.substr(name.size())));
  }
  return 0;
}
