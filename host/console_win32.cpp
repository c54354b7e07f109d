#include <windows.h>

#include "host/console.h"

void leaveOwnConsole() {
  DWORD processes[2];
  if (GetConsoleProcessList(processes, 2) == 1) FreeConsole();
}
