#include "print/reportOutput.h"

#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>
#include <algorithm>
#include <string>

#include "print/printStart.h"
#include "print/report.h"
#include "support/failure.h"
#include "support/log.h"

namespace {

TprintStart startPage(QPagedPaintDevice& device) {
  return device.newPage() ? TprintStart::started : TprintStart::failed;
}

ToutputResult failed(const Tfailure& failure) {
  logFailure(failure.text());
  return ToutputResult::failed;
}

}  // namespace

std::optional<TpageRange> chosenPages(int from, int to, std::size_t pageCount) {
  const auto first = static_cast<std::size_t>(std::max(from, 1)) - 1;
  const auto end = to > 0 ? static_cast<std::size_t>(to) : pageCount;
  if (first >= end || end > pageCount) return std::nullopt;
  return TpageRange{first, end};
}

ToutputResult printReport(const Treport& report, QPagedPaintDevice& device, const TpageRange& pages,
                          const TpageStart& start) {
  QPainter painter;
  for (std::size_t page = pages.first; page < pages.end; ++page) {
    if (!start(page)) {
      if (auto* printer = dynamic_cast<QPrinter*>(&device)) printer->abort();
      return ToutputResult::cancelled;
    }
    const TprintStart started = page == pages.first ? startPrinting(painter, device) : startPage(device);
    if (started == TprintStart::cancelled) return ToutputResult::cancelled;
    if (started == TprintStart::failed) {
      return failed({"print", "page " + std::to_string(page + 1), "the device did not start it"});
    }
    report.paintPage(painter, page, device.logicalDpiX());
  }
  return painter.end() ? ToutputResult::done : failed({"print", "report", "the device did not finish it"});
}

ToutputResult savePdf(const Treport& report, const QString& path, const TpageStart& start) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return failed({"open", "PDF file", file.errorString().toStdString()});
  QPdfWriter writer(&file);
  writer.setTitle(QStringLiteral("Equipment Records"));
  writer.setResolution(unitsPerInch);
  writer.setPageLayout(report.paper());
  const ToutputResult result = printReport(report, writer, {0, report.pageCount()}, start);
  if (result != ToutputResult::done) file.cancelWriting();
  const bool written = file.commit();
  if (result != ToutputResult::done || written) return result;
  return failed({"write", "PDF file", file.errorString().toStdString()});
}
