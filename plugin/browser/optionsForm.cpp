#include "browser/optionsForm.h"

#include <QValidator>
#include <array>
#include <utility>

#include "browser/settings.h"
#include "support/recordString.h"
#include "ui_optionsForm.h"

namespace {

/// Refuses characters that Windows-1252 lacks, in which captions are stored.
class TcaptionValidator : public QValidator {
 public:
  using QValidator::QValidator;

  State validate(QString& text, int& /*position*/) const override { return toRecordText(text) ? Acceptable : Invalid; }
};

}  // namespace

TfrmOptions::TfrmOptions(TiniFile ini, QWidget* parent)
    : QDialog(parent, Qt::Tool | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      ini_(std::move(ini)),
      ui_(std::make_unique<Ui::TfrmOptions>()) {
  ui_->setupUi(this);
  const std::array<std::pair<QLineEdit*, TliteralCheckBox*>, 3> custom = {
      {{ui_->txtCustom1, ui_->chkCustom1}, {ui_->txtCustom2, ui_->chkCustom2}, {ui_->txtCustom3, ui_->chkCustom3}}};
  for (const auto& [edit, box] : custom) {
    edit->setValidator(new TcaptionValidator(this));
    connect(edit, &QLineEdit::textChanged, box, &TliteralCheckBox::setLiteralText);
  }
  connect(ui_->btnOK, &QPushButton::clicked, this, &TfrmOptions::btnOKClick);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &TfrmOptions::reject);
  showSettings();
}

TfrmOptions::~TfrmOptions() = default;

void TfrmOptions::showSettings() {
  const TbrowserSettings settings = TbrowserSettings::load(ini_);
  ui_->chkDescription->setChecked(settings.display.description);
  ui_->chkManufacturer->setChecked(settings.display.manufacturer);
  ui_->chkModel->setChecked(settings.display.model);
  ui_->chkTitle->setChecked(settings.display.title);
  ui_->chkCustom1->setChecked(settings.display.custom[0]);
  ui_->chkCustom2->setChecked(settings.display.custom[1]);
  ui_->chkCustom3->setChecked(settings.display.custom[2]);
  ui_->txtCustom1->setText(fromRecordText(settings.customNames[0]));
  ui_->txtCustom2->setText(fromRecordText(settings.customNames[1]));
  ui_->txtCustom3->setText(fromRecordText(settings.customNames[2]));
}

void TfrmOptions::btnOKClick() {
  TbrowserSettings settings;
  settings.display.description = ui_->chkDescription->isChecked();
  settings.display.manufacturer = ui_->chkManufacturer->isChecked();
  settings.display.model = ui_->chkModel->isChecked();
  settings.display.title = ui_->chkTitle->isChecked();
  settings.display.custom = {ui_->chkCustom1->isChecked(), ui_->chkCustom2->isChecked(), ui_->chkCustom3->isChecked()};
  const std::array<QLineEdit*, 3> edits = {ui_->txtCustom1, ui_->txtCustom2, ui_->txtCustom3};
  for (std::size_t i = 0; i < edits.size(); ++i) {
    settings.customNames[i] = toRecordText(edits[i]->text()).value_or(std::string());
  }
  settings.saveOptions(ini_);
  accept();
}
