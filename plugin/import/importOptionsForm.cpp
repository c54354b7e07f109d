#include "import/importOptionsForm.h"

#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>
#include <QValidator>
#include <utility>

#include "import/columnMappingForm.h"
#include "import/importFile.h"
#include "import/importMessages.h"
#include "support/formControl.h"
#include "support/messageBox.h"
#include "support/modalDialog.h"
#include "support/windows1252.h"
#include "ui_importOptionsForm.h"

namespace {

/// Refuses a character that is not one byte in the file.
class TdelimiterValidator : public QValidator {
 public:
  using QValidator::QValidator;

  State validate(QString& text, int& /*position*/) const override { return toRecordText(text) ? Acceptable : Invalid; }
};

}  // namespace

TEquipRecImportOptions::TEquipRecImportOptions(TlistOwner& list, TiniFile ini, QWidget* parent)
    : QDialog(parent), list_(list), ini_(std::move(ini)), ui_(std::make_unique<Ui::TEquipRecImportOptions>()) {
  ui_->setupUi(this);
  setWindowFlags(windowFlags() | Qt::MSWindowsFixedSizeDialogHint);
  ui_->EditDelimiter->setValidator(new TdelimiterValidator(this));
  formControl<QLineEdit>(*ui_->SpinEditStartRow, QStringLiteral("qt_spinbox_lineedit")).setReadOnly(true);
  connect(ui_->EditFilename, &QLineEdit::textChanged, this, &TEquipRecImportOptions::EnableBtnContinue);
  connect(ui_->EditFilename, &QLineEdit::textChanged, this, &TEquipRecImportOptions::lookAtFile);
  connect(ui_->ComboBoxDelimiter, &QComboBox::currentIndexChanged, this, &TEquipRecImportOptions::EnableBtnContinue);
  connect(ui_->EditDelimiter, &QLineEdit::textChanged, this, &TEquipRecImportOptions::EnableBtnContinue);
  connect(ui_->CheckBoxSpreadsheet, &QCheckBox::toggled, ui_->CheckBoxQuotes, &QCheckBox::setDisabled);
  connect(ui_->BtnBrowse, &QPushButton::clicked, this, &TEquipRecImportOptions::BtnBrowseClick);
  connect(ui_->BtnCancel, &QPushButton::clicked, this, &TEquipRecImportOptions::reject);
  connect(ui_->BtnContinue, &QPushButton::clicked, this, &TEquipRecImportOptions::BtnContinueClick);
  connect(ui_->btnSuggestion, &QPushButton::clicked, this, &TEquipRecImportOptions::btnSuggestionClick);
  showChoices(TimportChoices::load(ini_));
  lookAtFile();
  followChoices();
  EnableBtnContinue();
  if (ui_->BtnContinue->isEnabled()) ui_->BtnContinue->setFocus();
}

TEquipRecImportOptions::~TEquipRecImportOptions() = default;

int TEquipRecImportOptions::exec() {
  const QPointer<TEquipRecImportOptions> self(this);
  QEventLoop loop;
  connect(this, &QDialog::finished, &loop, &QEventLoop::quit);
  connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
  setModal(true);
  show();
  loop.exec(QEventLoop::DialogExec);
  return self ? result() : static_cast<int>(Rejected);
}

/// Called however the dialog closes.
void TEquipRecImportOptions::done(int result) {
  choices().save(ini_);
  QDialog::done(result);
}

void TEquipRecImportOptions::showChoices(const TimportChoices& choices) {
  ui_->EditFilename->setText(fromRecordText(choices.fileName));
  ui_->ComboBoxDelimiter->setCurrentIndex(choices.delimiter);
  ui_->EditDelimiter->setText(fromRecordText(choices.userDelimiter));
  ui_->SpinEditStartRow->setValue(choices.startRow);
  ui_->CheckBoxQuotes->setChecked(choices.quotes);
  ui_->CheckBoxSpreadsheet->setChecked(choices.spreadsheet);
  ui_->ComboBoxCharset->setCurrentIndex(static_cast<int>(charsetOf(choices.charset)));
}

void TEquipRecImportOptions::followChoices() {
  const auto follow = [this] { showSuggestion(); };
  for (QComboBox* box : {ui_->ComboBoxDelimiter, ui_->ComboBoxCharset}) {
    connect(box, &QComboBox::currentIndexChanged, this, follow);
  }
  for (QCheckBox* box : {ui_->CheckBoxQuotes, ui_->CheckBoxSpreadsheet}) {
    connect(box, &QCheckBox::toggled, this, follow);
  }
  connect(ui_->SpinEditStartRow, &QSpinBox::valueChanged, this, follow);
  connect(ui_->EditDelimiter, &QLineEdit::textChanged, this, follow);
}

void TEquipRecImportOptions::lookAtFile() {
  suggestion_.reset();
  const QString name = ui_->EditFilename->text();
  if (QFileInfo(name).isFile()) {
    suggestion_ = TimportSuggestion::of(startOf(name.toStdU16String()), loadCaptions(ini_));
  }
  showSuggestion();
}

void TEquipRecImportOptions::showSuggestion() {
  const bool isOffered = suggestion_ && !suggestion_->isSetIn(choices());
  ui_->lblSuggestion->setText(isOffered ? fromRecordText(suggestion_->text()) : QString());
  for (QWidget* widget : {static_cast<QWidget*>(ui_->lblSuggestionTitle), static_cast<QWidget*>(ui_->lblSuggestion),
                          static_cast<QWidget*>(ui_->btnSuggestion)}) {
    widget->setVisible(isOffered);
  }
}

void TEquipRecImportOptions::btnSuggestionClick() {
  if (!suggestion_) return;
  TimportChoices suggested = choices();
  suggestion_->setIn(suggested);
  showChoices(suggested);
  ui_->BtnContinue->setFocus();
}

TimportChoices TEquipRecImportOptions::choices() const {
  const auto bytes = [](const QLineEdit* edit) { return toRecordText(edit->text()).value_or(std::string()); };
  return {bytes(ui_->EditFilename),
          ui_->ComboBoxDelimiter->currentIndex(),
          bytes(ui_->EditDelimiter),
          ui_->SpinEditStartRow->value(),
          ui_->CheckBoxQuotes->isChecked(),
          ui_->CheckBoxSpreadsheet->isChecked(),
          ui_->ComboBoxCharset->currentIndex()};
}

TimportOptions TEquipRecImportOptions::options() const {
  const TimportChoices chosen = choices();
  return {ui_->EditFilename->text().toStdU16String(),
          delimiterCharacter(chosen.delimiter, chosen.userDelimiter),
          chosen.startRow,
          chosen.quotes,
          chosen.spreadsheet,
          charsetOf(chosen.charset)};
}

void TEquipRecImportOptions::EnableBtnContinue() {
  const bool other = ui_->ComboBoxDelimiter->currentIndex() == otherDelimiter;
  const bool delimited = !other || !ui_->EditDelimiter->text().isEmpty();
  ui_->BtnContinue->setEnabled(QFileInfo(ui_->EditFilename->text()).isFile() && delimited);
  ui_->EditDelimiter->setVisible(other);
}

void TEquipRecImportOptions::BtnBrowseClick() {
  TmodalDialog<QFileDialog> dialog(this);
  dialog->setObjectName(QStringLiteral("OpenDialogFilename"));
  dialog->setFileMode(QFileDialog::ExistingFile);
  dialog->setDefaultSuffix(QStringLiteral("csv"));
  dialog->setNameFilters({QStringLiteral("Comma Separated Value files (*.csv)"), QStringLiteral("All files (*.*)")});
  const QFileInfo last(ui_->EditFilename->text());
  if (last.dir().exists() && !last.filePath().isEmpty()) dialog->setDirectory(last.absolutePath());
  if (dialog.exec() != Accepted) return;
  ui_->EditFilename->setText(QDir::toNativeSeparators(dialog->selectedFiles().value(0)));
  if (ui_->BtnContinue->isEnabled()) ui_->BtnContinue->setFocus();
}

void TEquipRecImportOptions::BtnContinueClick() {
  const QPointer<TEquipRecImportOptions> self(this);
  hide();
  auto result = TimportResult::back;
  TmodalDialog<TEquipRecImport> form(options(), list_, ini_, result, parentWidget());
  const bool readable = form->hasSample();
  if (readable) form.exec();
  if (self.isNull()) return;
  if (!readable || result == TimportResult::back) {
    show();
    if (!readable) showMessage(this, importNotRead);
    if (self) EnableBtnContinue();
    return;
  }
  done(result == TimportResult::imported ? Accepted : Rejected);
}
