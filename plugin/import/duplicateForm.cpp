#include "import/duplicateForm.h"

#include <QStyle>
#include <QValidator>

#include "support/recordText.h"
#include "support/windows1252.h"
#include "ui_duplicateForm.h"

namespace {

/// Lets nothing into a Device ID that a record cannot hold: a double quote becomes the typographic one, a line break a
/// blank, and what Windows-1252 lacks is refused.
class TdeviceIdValidator : public QValidator {
 public:
  using QValidator::QValidator;

  State validate(QString& text, int& /*position*/) const override {
    text.replace(u'"', QChar(0x201D)).replace(u'\n', u' ').replace(u'\r', u' ');
    return toRecordText(text) && !text.contains(QChar(u'\0')) ? Acceptable : Invalid;
  }
};

/// The bytes of a text without the blanks around it.
std::string trimmedBytes(const QString& text) {
  return std::string(trimmedText(toRecordText(text).value_or(std::string())));
}

}  // namespace

TEquipRecImportDup::TEquipRecImportDup(std::string& deviceId, bool& skip, QWidget* parent)
    : QDialog(parent), deviceId_(deviceId), skip_(skip), ui_(std::make_unique<Ui::TEquipRecImportDup>()) {
  ui_->setupUi(this);
  setWindowFlags(windowFlags() | Qt::MSWindowsFixedSizeDialogHint);
  const int iconSize = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
  ui_->ImageIcon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(iconSize));
  ui_->EditDeviceID->setText(fromRecordText(deviceId));
  ui_->EditDeviceID->setValidator(new TdeviceIdValidator(this));
  connect(ui_->EditDeviceID, &QLineEdit::textChanged, this, &TEquipRecImportDup::EditDeviceIDChange);
  connect(ui_->BtnRename, &QPushButton::clicked, this, &TEquipRecImportDup::BtnRenameClick);
  connect(ui_->BtnSkip, &QPushButton::clicked, this, &TEquipRecImportDup::BtnSkipClick);
  EditDeviceIDChange();
  ui_->EditDeviceID->selectAll();
}

TEquipRecImportDup::~TEquipRecImportDup() = default;

void TEquipRecImportDup::reject() {
  skip_ = true;
  QDialog::reject();
}

/// Enter in the box presses Rename, which is the default button, while it is enabled.
void TEquipRecImportDup::EditDeviceIDChange() {
  ui_->BtnRename->setEnabled(!trimmedBytes(ui_->EditDeviceID->text()).empty());
}

void TEquipRecImportDup::BtnRenameClick() {
  deviceId_ = trimmedBytes(ui_->EditDeviceID->text());
  accept();
}

void TEquipRecImportDup::BtnSkipClick() {
  skip_ = true;
  accept();
}
