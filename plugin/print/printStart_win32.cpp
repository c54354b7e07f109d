#include <QPagedPaintDevice>
#include <QPainter>
#include <QtGlobal>
#include <windows.h>

#include "print/printStart.h"

namespace {

DWORD firstError = 0;
QtMessageHandler previousHandler = nullptr;

/// The system's error when Qt logs that a print did not start. Later calls of the system overwrite it before `begin`
/// returns.
void noteFirstError(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (firstError == 0) firstError = GetLastError();
  previousHandler(type, context, text);
}

}  // namespace

TprintStart startPrinting(QPainter& painter, QPagedPaintDevice& device) {
  firstError = 0;
  previousHandler = qInstallMessageHandler(noteFirstError);
  const bool isStarted = painter.begin(&device);
  qInstallMessageHandler(previousHandler);
  if (isStarted) return TprintStart::started;
  const bool isCancelled = firstError == ERROR_CANCELLED || firstError == ERROR_PRINT_CANCELLED;
  return isCancelled ? TprintStart::cancelled : TprintStart::failed;
}
