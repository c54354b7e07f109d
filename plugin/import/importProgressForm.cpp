#include "import/importProgressForm.h"

#include "ui_importProgressForm.h"

TImportProgress::TImportProgress(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      ui_(std::make_unique<Ui::TImportProgress>()) {
  ui_->setupUi(this);
  setModal(true);
  connect(ui_->BtnOK, &QPushButton::clicked, this, &TImportProgress::BtnOKClick);
  connect(ui_->BtnCancel, &QPushButton::clicked, this, &TImportProgress::BtnCancelClick);
  connect(ui_->btnDetails, &QPushButton::clicked, this, &TImportProgress::detailsWanted);
  ui_->BtnCancel->setFocus();
}

TImportProgress::~TImportProgress() = default;

void TImportProgress::Step() {
  ui_->pbImport->setValue(ui_->pbImport->value() + 1);
}

void TImportProgress::stepTo(int percent) {
  while (ui_->pbImport->value() < percent) Step();
}

void TImportProgress::Finish(const QString& summary, bool isAnything, bool hasDetails) {
  ui_->LabelDesc->setText(isAnything ? QStringLiteral("Equipment records imported successfully.")
                                     : QStringLiteral("No equipment records were imported."));
  ui_->lblSummary->setText(summary);
  ui_->lblSummary->show();
  ui_->btnDetails->setVisible(hasDetails);
  ui_->pbImport->setValue(ui_->pbImport->maximum());
  ui_->BtnOK->setEnabled(true);
  ui_->BtnOK->setFocus();
  ui_->BtnCancel->setEnabled(false);
}

void TImportProgress::reject() {
  if (ui_->BtnCancel->isEnabled()) {
    BtnCancelClick();
  } else {
    BtnOKClick();
  }
}

void TImportProgress::BtnCancelClick() {
  cancelled_ = true;
  hide();
}

void TImportProgress::BtnOKClick() {
  accept();
}
