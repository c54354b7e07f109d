#include <QPagedPaintDevice>
#include <QPainter>

#include "print/printStart.h"

TprintStart startPrinting(QPainter& painter, QPagedPaintDevice& device) {
  return painter.begin(&device) ? TprintStart::started : TprintStart::failed;
}
