#include "import/duplicateForm.h"

#include <QStyle>
#include <QValidator>
#include <utility>

#include "support/recordText.h"
#include "support/windows1252.h"
#include "ui_duplicateForm.h"

namespace {

/// Keeps out what a record should not hold. A double quote becomes the typographic one, a tab and a run of line breaks
/// a blank; a text with characters that Windows-1252 lacks is refused.
class TdeviceIdValidator : public QValidator {
 public:
  using QValidator::QValidator;

  State validate(QString& text, int& /*position*/) const override {
    const auto bytes = toRecordText(text.normalized(QString::NormalizationForm_C));
    if (!bytes) return Invalid;
    text = fromRecordText(withoutDoubleQuotes(withoutControls(*bytes)));
    return Acceptable;
  }
};

/// The bytes of a text without surrounding blanks.
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

/// Rename is the default button: Enter presses it while it is enabled.
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
