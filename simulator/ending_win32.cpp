#include <QCoreApplication>
#include <windows.h>

#include "simulator/ending.h"

namespace {

/// Called on a thread of the system's own.
BOOL WINAPI quit(DWORD /*event*/) {
  QMetaObject::invokeMethod(QCoreApplication::instance(), &QCoreApplication::quit, Qt::QueuedConnection);
  return TRUE;
}

}  // namespace

void endInOrder() {
  SetConsoleCtrlHandler(quit, TRUE);
}
