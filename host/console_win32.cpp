#include <array>
#include <windows.h>

#include "host/console.h"

void leaveOwnConsole() {
  std::array<DWORD, 2> processes{};
  if (GetConsoleProcessList(processes.data(), processes.size()) == 1) FreeConsole();
}
