#include "print/reportOutput.h"

#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>

#include "print/report.h"

ToutputResult printReport(const Treport& report, QPagedPaintDevice& device, const TpageRange& pages,
                          const TpageStart& start) {
  QPainter painter;
  for (std::size_t page = pages.first; page < pages.end; ++page) {
    if (!start(page)) {
      if (auto* printer = dynamic_cast<QPrinter*>(&device)) printer->abort();
      return ToutputResult::cancelled;
    }
    const bool ready = page == pages.first ? painter.begin(&device) : device.newPage();
    if (!ready) return ToutputResult::failed;
    report.paintPage(painter, page, device.logicalDpiX());
  }
  return painter.end() ? ToutputResult::done : ToutputResult::failed;
}

ToutputResult savePdf(const Treport& report, const QString& path, const TpageStart& start) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return ToutputResult::failed;
  QPdfWriter writer(&file);
  writer.setTitle(QStringLiteral("Equipment Records"));
  writer.setResolution(unitsPerInch);
  writer.setPageLayout(report.paper());
  const ToutputResult result = printReport(report, writer, {0, report.pageCount()}, start);
  if (result != ToutputResult::done) file.cancelWriting();
  const bool written = file.commit();
  return result == ToutputResult::done && !written ? ToutputResult::failed : result;
}
