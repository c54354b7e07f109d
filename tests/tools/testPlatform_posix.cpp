#include <malloc.h>

#include "tools/testFiles.h"
#include "tools/testPlatform.h"

std::size_t openHandles() {
  return static_cast<std::size_t>(namesIn("/proc/self/fd").size());
}

std::size_t memoryInUse() {
  const struct mallinfo2 memory = mallinfo2();
  return memory.uordblks + memory.hblkhd;
}

QString linkOfPort3(const TtestFolder& folder) {
  qputenv("QT484_PORTS", folder.path().c_str());
  return QString::fromStdString((folder / "com3").string());
}
