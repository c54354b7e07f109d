#include <windows.h>

#include "tools/testPlatform.h"

std::size_t openHandles() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return count;
}

// The analyzer runs in the folder of the system's serial ports.
std::size_t memoryInUse() {
  return 0;
}

QString linkOfPort3(const TtestFolder& /*folder*/) {
  return QStringLiteral("com3");
}
