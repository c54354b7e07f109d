#include <malloc.h>
#include <windows.h>

#include "tools/testPlatform.h"
// needs windows.h first
#include <psapi.h>

const bool memoryTells = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") == nullptr;

std::size_t openHandles() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return count;
}

std::size_t memoryInUse() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return counters.PagefileUsage;
}

std::size_t allocatedBytes() {
  std::size_t sum = 0;
  _HEAPINFO entry{};
  while (_heapwalk(&entry) == _HEAPOK) sum += entry._useflag == _USEDENTRY ? entry._size : 0;
  return sum;
}

// The analyzer runs in the folder of the system's serial ports.
QString linkOfPort3(const TtestFolder& /*folder*/) {
  return QStringLiteral("com3");
}
