#include <fstream>
#include <malloc.h>
#include <unistd.h>

#include "tools/testFiles.h"
#include "tools/testPlatform.h"

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
const bool memoryTells = false;
#else
const bool memoryTells = true;
#endif

std::size_t openHandles() {
  return static_cast<std::size_t>(namesIn("/proc/self/fd").size());
}

std::size_t memoryInUse() {
  std::size_t total = 0;
  std::size_t resident = 0;
  std::ifstream("/proc/self/statm") >> total >> resident;
  return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

std::size_t allocatedBytes() {
  return mallinfo2().uordblks + mallinfo2().hblkhd;
}

QString linkOfPort3(const TtestFolder& folder) {
  qputenv("QT484_PORTS", folder.path().c_str());
  return QString::fromStdString((folder / "com3").string());
}
