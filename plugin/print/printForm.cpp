#include "print/printForm.h"

#include <QScreen>
#include <utility>

#include "print/paper.h"
#include "print/previewForm.h"
#include "print/report.h"
#include "print/reportDialogs.h"
#include "support/formControl.h"
#include "support/modalDialog.h"
#include "support/windows1252.h"
#include "ui_printForm.h"

TEquipRecPrint::TEquipRecPrint(TprintJob job, TiniFile ini, QWidget* parent)
    : QDialog(parent), job_(std::move(job)), ini_(std::move(ini)), ui_(std::make_unique<Ui::TEquipRecPrint>()) {
  ui_->setupUi(this);
  for (std::size_t i = 0; i < printColumnCount; ++i) {
    boxes_[i] = &formControl<TcaptionCheckBox>(*this, "chk", printColumns[i].name);
    connect(boxes_[i], &QCheckBox::toggled, this, &TEquipRecPrint::enableButtons);
  }
  connect(ui_->btnPreview, &QPushButton::clicked, this, &TEquipRecPrint::btnPreviewClick);
  connect(ui_->btnPrint, &QPushButton::clicked, this, [this] { print(*this); });
  connect(ui_->btnPdf, &QPushButton::clicked, this, [this] { savePdf(*this); });
  connect(ui_->btnCancel, &QPushButton::clicked, this, &TEquipRecPrint::reject);
  showCaptions();
  showSettings(TprintSettings::load(ini_));
  enableButtons();
  resize(size().boundedTo(screen()->availableSize()));
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
  ui_->ComboBoxPaper->setPaper(paperOfKey(settings.paper));
  pdfFolder_ = settings.pdfFolder;
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
  settings.paper = paperKey(ui_->ComboBoxPaper->paper());
  settings.pdfFolder = pdfFolder_;
  return settings;
}

TreportTable TEquipRecPrint::table() const {
  return {job_, ui_->radSelected->isChecked() ? job_.selected : job_.shown, settings()};
}

TreportDialogs TEquipRecPrint::dialogs(QWidget* owner) const {
  return {table(), settings(), owner};
}

void TEquipRecPrint::btnPreviewClick() {
  const Treport report(table(), reportPageLayout(ui_->ComboBoxPaper->paper(), settings().landscape));
  TmodalDialog<TfrmPrintPreview> preview(report, this);
  connect(preview.get(), &TfrmPrintPreview::printAsked, this, [this, &preview] { print(*preview.get()); });
  connect(preview.get(), &TfrmPrintPreview::pdfAsked, this, [this, &preview] { savePdf(*preview.get()); });
  if (preview.exec() == Accepted) accept();
}

void TEquipRecPrint::print(QDialog& from) {
  TreportDialogs dialogs = this->dialogs(&from);
  if (dialogs.print()) finish(from, dialogs.settings());
}

void TEquipRecPrint::savePdf(QDialog& from) {
  TreportDialogs dialogs = this->dialogs(&from);
  if (dialogs.savePdf()) finish(from, dialogs.settings());
}

void TEquipRecPrint::finish(QDialog& from, const TprintSettings& chosen) {
  ui_->ComboBoxPaper->setPaper(paperOfKey(chosen.paper));
  pdfFolder_ = chosen.pdfFolder;
  from.accept();
}
