#include <QCoreApplication>
#include <windows.h>

#include "simulator/ending.h"

namespace {

/// The system calls this on a thread of its own.
BOOL WINAPI quit(DWORD /*event*/) {
  QMetaObject::invokeMethod(QCoreApplication::instance(), &QCoreApplication::quit, Qt::QueuedConnection);
  return TRUE;
}

}  // namespace

void endInOrder() {
  SetConsoleCtrlHandler(quit, TRUE);
}
