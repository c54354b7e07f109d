#include "print/printForm.h"

#include <QFileDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>
#include <algorithm>
#include <utility>

#include "print/previewForm.h"
#include "print/printMessages.h"
#include "print/printProgress.h"
#include "print/report.h"
#include "support/formControl.h"
#include "support/messageBox.h"
#include "support/modalDialog.h"
#include "support/windows1252.h"
#include "ui_printForm.h"

namespace {

/// The pages that the user chose in the printer's dialog.
TpageRange chosenPages(const QPrinter& printer, std::size_t pageCount) {
  const auto from = static_cast<std::size_t>(std::max(printer.fromPage(), 1));
  const auto to = printer.toPage() > 0 ? static_cast<std::size_t>(printer.toPage()) : pageCount;
  return {std::min(from, pageCount) - 1, std::min(to, pageCount)};
}

}  // namespace

TEquipRecPrint::TEquipRecPrint(TprintJob job, TiniFile ini, QWidget* parent)
    : QDialog(parent), job_(std::move(job)), ini_(std::move(ini)), ui_(std::make_unique<Ui::TEquipRecPrint>()) {
  ui_->setupUi(this);
  for (std::size_t i = 0; i < printColumnCount; ++i) {
    boxes_[i] = &formControl<TcaptionCheckBox>(*this, "chk", printColumns[i].name);
    connect(boxes_[i], &QCheckBox::toggled, this, &TEquipRecPrint::enableButtons);
  }
  connect(ui_->btnPreview, &QPushButton::clicked, this, &TEquipRecPrint::btnPreviewClick);
  connect(ui_->btnPrint, &QPushButton::clicked, this, &TEquipRecPrint::btnPrintClick);
  connect(ui_->btnPdf, &QPushButton::clicked, this, &TEquipRecPrint::btnPdfClick);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &TEquipRecPrint::reject);
  showCaptions();
  showSettings(TprintSettings::load(ini_));
  enableButtons();
}

TEquipRecPrint::~TEquipRecPrint() = default;

void TEquipRecPrint::done(int result) {
  settings().save(ini_);
  QDialog::done(result);
}

void TEquipRecPrint::showCaptions() {
  for (std::size_t i = 0; i < printColumnCount; ++i) {
    const TcolumnId id = printColumns[i].id;
    if (id >= fieldCount || textField(id).customNumber == 0) continue;
    const QString caption = fromRecordText(columnHeading(id, job_.captions));
    // An empty caption leaves the designed one.
    if (!caption.trimmed().isEmpty()) boxes_[i]->setCaption(caption);
  }
  ui_->radAll->setText(QStringLiteral("All records shown (%1)").arg(job_.shown.size()));
  ui_->radSelected->setText(QStringLiteral("Selected records (%1)").arg(job_.selected.size()));
}

void TEquipRecPrint::showSettings(const TprintSettings& settings) {
  for (std::size_t i = 0; i < boxes_.size(); ++i) boxes_[i]->setChecked(settings.printed[i]);
  (settings.landscape ? ui_->radLandscape : ui_->radPortrait)->setChecked(true);
  (job_.selected.size() > 1 ? ui_->radSelected : ui_->radAll)->setChecked(true);
  ui_->radSelected->setEnabled(!job_.selected.empty());
}

void TEquipRecPrint::enableButtons() {
  const bool enabled = settings().printsAny();
  for (QPushButton* button : {ui_->btnPreview, ui_->btnPrint, ui_->btnPdf}) button->setEnabled(enabled);
}

TprintSettings TEquipRecPrint::settings() const {
  TprintSettings settings;
  for (std::size_t i = 0; i < boxes_.size(); ++i) settings.printed[i] = boxes_[i]->isChecked();
  settings.landscape = ui_->radLandscape->isChecked();
  return settings;
}

TreportTable TEquipRecPrint::table() const {
  return {job_, ui_->radSelected->isChecked() ? job_.selected : job_.shown, settings()};
}

void TEquipRecPrint::btnPreviewClick() {
  const Treport report(table(), reportPageLayout(usualPaper(), settings().landscape));
  TmodalDialog<TfrmPrintPreview>(report, this).exec();
}

void TEquipRecPrint::btnPrintClick() {
  if (QPrinterInfo::availablePrinterNames().isEmpty()) {
    showMessage(this, noPrinter);
    return;
  }
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(QStringLiteral("Equipment Records"));
  printer.setPageLayout(reportPageLayout(printer.pageLayout().pageSize(), settings().landscape));
  if (!askForPrinter(printer)) return;
  // The user may have chosen another printer, which has its own margins and paper.
  const bool landscape = printer.pageLayout().orientation() == QPageLayout::Landscape;
  printer.setPageLayout(reportPageLayout(printer.pageLayout().pageSize(), landscape));
  write(printer.pageLayout(), printFailed, [&](const Treport& report, const TpageStart& start) {
    return printReport(report, printer, chosenPages(printer, report.pageCount()), start);
  });
}

void TEquipRecPrint::btnPdfClick() {
  const auto path = askForPdfPath();
  if (!path) return;
  write(reportPageLayout(usualPaper(), settings().landscape), pdfNotWritten,
        [&](const Treport& report, const TpageStart& start) { return savePdf(report, *path, start); });
}

bool TEquipRecPrint::askForPrinter(QPrinter& printer) {
  TmodalDialog<QPrintDialog> dialog(&printer, this);
  dialog->setOptions(QAbstractPrintDialog::PrintShowPageSize | QAbstractPrintDialog::PrintPageRange);
  return dialog.exec() == Accepted;
}

std::optional<QString> TEquipRecPrint::askForPdfPath() {
  TmodalDialog<QFileDialog> dialog(this, QStringLiteral("Save as PDF"),
                                   QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setNameFilter(QStringLiteral("PDF files (*.pdf)"));
  dialog->setDefaultSuffix(QStringLiteral("pdf"));
  dialog->selectFile(QStringLiteral("Equipment Records.pdf"));
  if (dialog.exec() != Accepted) return std::nullopt;
  return dialog->selectedFiles().constFirst();
}

std::optional<ToutputResult> TEquipRecPrint::writeWithProgress(const Treport& report, const Twrite& write) {
  TmodalDialog<TfrmPrintProgress> progress(report.pageCount(), this);
  const ToutputResult result = write(report, [&](std::size_t page) { return progress->startPage(page); });
  return progress.isGone() ? std::nullopt : std::optional(result);
}

void TEquipRecPrint::write(const QPageLayout& paper, const TmessageText& failure, const Twrite& write) {
  const Treport report(table(), paper);
  const auto result = writeWithProgress(report, write);
  if (!result) return;
  if (*result == ToutputResult::failed) showMessage(this, failure);
  if (*result == ToutputResult::done) accept();
}
