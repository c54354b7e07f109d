#include <QApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <algorithm>
#include <malloc.h>
#include <memory>

#include "bench/rows.h"
#include "print/paper.h"
#include "print/previewForm.h"
#include "print/report.h"
#include "print/reportOutput.h"
#include "testproc/autosequenceFileStructs.h"

namespace {

constexpr std::size_t fewRecords = 1000;
constexpr double mostForPreview = 1000;  // milliseconds

/// A report of the full list with all fields.
class TprintList {
 public:
  explicit TprintList(const TbenchFolders& folders) {
    records_ = fullTable(folders);
    loadTitles(folders, titles_);
  }

  std::unique_ptr<Treport> report(std::size_t count) const {
    TprintJob job{records_, titles_, {}, {}, {"Location", "Department", "Asset Note"}, {}};
    for (TrecordIndex index = 0; index < count; ++index) job.shown.push_back(index);
    TprintSettings settings;
    settings.printed.fill(true);
    return std::make_unique<Treport>(TreportTable(job, job.shown, settings), reportPageLayout(usualPaper(), false));
  }

 private:
  TequipRecTable records_;
  TtestProcTable titles_;
};

void showOnce(QWidget& widget) {
  widget.show();
  widget.repaint();
  QApplication::processEvents();
}

double measurePreview(const TprintList& list) {
  return millisecondsOf([&] {
    const auto report = list.report(equipRecLimit);
    TfrmPrintPreview preview(*report, nullptr);
    showOnce(preview);
  });
}

/// The toolkit's preview, which asks for all pages before it shows the first one.
double measureToolkitPreview(const TprintList& list) {
  return millisecondsOf([&] {
    const auto report = list.report(equipRecLimit);
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(report->paper());
    QPrintPreviewWidget preview(&printer);
    QObject::connect(&preview, &QPrintPreviewWidget::paintRequested, &preview, [&](QPrinter* device) {
      printReport(*report, *device, {0, report->pageCount()}, [](std::size_t) { return true; });
    });
    showOnce(preview);
    require(preview.pageCount() == int(report->pageCount()), "the toolkit's preview does not have all pages");
  });
}

/// Peak memory in KiB while a report is written to a PDF file, minus the memory in use before.
double measureMemory(const TprintList& list, std::size_t count, const std::filesystem::path& pdf) {
  const auto report = list.report(count);
  const std::size_t before = mallinfo2().uordblks;
  std::size_t most = before;
  const auto look = [&](std::size_t) {
    most = std::max(most, std::size_t(mallinfo2().uordblks));
    return true;
  };
  require(savePdf(*report, QString::fromStdString(pdf.string()), look) == ToutputResult::done, "the PDF failed");
  return double(most - before) / 1024;
}

}  // namespace

std::vector<Trow> printRows(const TbenchFolders& folders) {
  const auto preview = [folders](bool toolkit) {
    const auto list = std::make_shared<TprintList>(folders);
    const auto yardstick = [list, toolkit] { return toolkit ? measureToolkitPreview(*list) : mostForPreview; };
    return Tsides{[list] { return measurePreview(*list); }, yardstick};
  };
  const auto memory = [folders] {
    const auto list = std::make_shared<TprintList>(folders);
    const auto measure = [=](std::size_t count) { return measureMemory(*list, count, folders.scratch / "memory.pdf"); };
    return Tsides{[=] { return measure(equipRecLimit); }, [=] { return measure(fewRecords); }};
  };
  return {{"print-preview", "ms", 0.1, 5, [=] { return preview(true); }},
          {"print-preview-second", "ms", 1.0, 5, [=] { return preview(false); }},
          {"print-memory-1000-to-18432", "KiB", 1.5, 3, memory}};
}
