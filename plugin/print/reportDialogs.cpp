#include "print/reportDialogs.h"

#include <QFileDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>
#include <utility>

#include "print/paper.h"
#include "print/printMessages.h"
#include "print/printProgress.h"
#include "print/report.h"
#include "support/messageBox.h"
#include "support/modalDialog.h"
#include "support/windows1252.h"

namespace {

/// Whether the printer takes the orientation. It keeps its own where it cannot print the other.
bool setLayout(QPrinter& printer, const QPageSize& paper, bool landscape) {
  printer.setPageLayout(reportPageLayout(paper, landscape));
  return (printer.pageLayout().orientation() == QPageLayout::Landscape) == landscape;
}

QString pdfFolder(const TprintSettings& settings) {
  QString folder = fromRecordText(settings.pdfFolder);
  if (!folder.isEmpty() && QFileInfo(folder).isDir()) return folder;
  return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

}  // namespace

TreportDialogs::TreportDialogs(TreportTable table, TprintSettings settings, QWidget* owner)
    : table_(std::move(table)), settings_(std::move(settings)), owner_(owner) {}

bool TreportDialogs::print() {
  if (QPrinterInfo::availablePrinterNames().isEmpty()) {
    showMessage(owner_, noPrinter);
    return false;
  }
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(QStringLiteral("Equipment Records"));
  return chooseLayout(printer) && printOn(printer);
}

/// The system's dialog counts: the user may choose another printer there, which has its own margins and papers.
bool TreportDialogs::chooseLayout(QPrinter& printer) {
  const bool isTaken = setLayout(printer, paperOfKey(settings_.paper), settings_.landscape);
  if (!askForPrinter(printer)) return false;
  const bool isTurned = printer.pageLayout().orientation() == QPageLayout::Landscape;
  const bool landscape = isTaken ? isTurned : settings_.landscape;
  if (setLayout(printer, printer.pageLayout().pageSize(), landscape) || !landscape) return true;
  const auto answer = showMessage(owner_, noLandscape, QMessageBox::Yes | QMessageBox::No);
  return answer == QMessageBox::Yes;
}

bool TreportDialogs::askForPrinter(QPrinter& printer) {
  TmodalDialog<QPrintDialog> dialog(&printer, owner_);
  dialog->setOptions(QAbstractPrintDialog::PrintShowPageSize | QAbstractPrintDialog::PrintPageRange);
  return dialog.exec() == QDialog::Accepted;
}

bool TreportDialogs::printOn(QPrinter& printer) {
  const Treport report(table_, printer.pageLayout());
  const auto pages = chosenPages(printer.fromPage(), printer.toPage(), report.pageCount());
  if (!pages) {
    showMessage(owner_, noSuchPages, QMessageBox::Ok,
                QStringLiteral("You chose pages %1 to %2, and the report has %3 on this paper.")
                    .arg(printer.fromPage())
                    .arg(printer.toPage())
                    .arg(report.pageCount()));
    return false;
  }
  const std::string paper = paperKey(printer.pageLayout().pageSize());
  if (!paper.empty()) settings_.paper = paper;
  return write(report, printFailed, [&](const Treport& written, const TpageStart& start) {
    return printReport(written, printer, *pages, start);
  });
}

bool TreportDialogs::savePdf() {
  const auto path = askForPdfPath();
  if (!path) return false;
  const auto folder = toRecordText(QFileInfo(*path).path());
  if (folder) settings_.pdfFolder = *folder;
  const Treport report(table_, reportPageLayout(paperOfKey(settings_.paper), settings_.landscape));
  return write(report, pdfNotWritten,
               [&](const Treport& written, const TpageStart& start) { return ::savePdf(written, *path, start); });
}

std::optional<QString> TreportDialogs::askForPdfPath() {
  TmodalDialog<QFileDialog> dialog(owner_, QStringLiteral("Save as PDF"), pdfFolder(settings_));
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setNameFilter(QStringLiteral("PDF files (*.pdf)"));
  dialog->setDefaultSuffix(QStringLiteral("pdf"));
  dialog->selectFile(QStringLiteral("Equipment Records.pdf"));
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog->selectedFiles().constFirst();
}

bool TreportDialogs::write(const Treport& report, const TmessageText& failure, const Twrite& write) {
  ToutputResult result = ToutputResult::cancelled;
  {
    TmodalDialog<TfrmPrintProgress> progress(report.pageCount(), owner_);
    result = write(report, [&](std::size_t page) { return progress->startPage(page); });
    if (progress.isGone()) return false;
  }
  if (result == ToutputResult::failed) showMessage(owner_, failure);
  return result == ToutputResult::done;
}
