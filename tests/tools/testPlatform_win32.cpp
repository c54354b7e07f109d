#include <windows.h>

#include "tools/testPlatform.h"

std::size_t openHandles() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return count;
}

// The analyzer runs in the folder of the system's serial ports.
QString linkOfPort3(const TtestFolder& /*folder*/) {
  return QStringLiteral("com3");
}
