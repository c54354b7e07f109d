#include "browser/optionsForm.h"

#include <QValidator>
#include <algorithm>
#include <utility>

#include "browser/settings.h"
#include "support/formControl.h"
#include "support/windows1252.h"
#include "ui_optionsForm.h"

namespace {

/// Refuses what a caption cannot be stored with: characters that Windows-1252 lacks, line breaks and other controls.
class TcaptionValidator : public QValidator {
 public:
  using QValidator::QValidator;

  State validate(QString& text, int& /*position*/) const override {
    const auto isControl = [](char byte) { return static_cast<unsigned char>(byte) < ' ' || byte == '\x7F'; };
    const auto bytes = toRecordText(text);
    return bytes && std::none_of(bytes->begin(), bytes->end(), isControl) ? Acceptable : Invalid;
  }
};

/// Shows a caption on its check box. Without one, screen readers still get the name that the box was designed with.
void showCaption(TcaptionCheckBox& box, const TtextField& field, const QString& caption) {
  box.setCaption(caption);
  if (caption.isEmpty()) box.setAccessibleName(QString::fromLatin1(field.heading));
}

/// Calls `visit` with each custom field, its edit and its check box.
template <typename Visit>
void forEachCustomField(const QWidget& form, Visit visit) {
  for (const TtextField& field : textFields) {
    if (field.customNumber == 0) continue;
    visit(field, formControl<QLineEdit>(form, "txt", field.name),
          formControl<TcaptionCheckBox>(form, "chk", field.name));
  }
}

/// Calls `visit` with the index of each column that the user may hide, and its check box.
template <typename Visit>
void forEachOptionalColumn(const QWidget& form, Visit visit) {
  for (std::size_t i = 0; i < allColumns.size(); ++i) {
    if (allColumns[i].shown != Tshown::always) visit(i, formControl<QCheckBox>(form, "chk", allColumns[i].name));
  }
}

}  // namespace

TfrmOptions::TfrmOptions(TiniFile ini, QWidget* parent)
    : QDialog(parent, Qt::Tool | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      ini_(std::move(ini)),
      ui_(std::make_unique<Ui::TfrmOptions>()) {
  ui_->setupUi(this);
  forEachCustomField(*this, [this](const TtextField& field, QLineEdit& edit, TcaptionCheckBox& box) {
    edit.setValidator(new TcaptionValidator(this));
    connect(&edit, &QLineEdit::textChanged, &box, [&](const QString& caption) { showCaption(box, field, caption); });
  });
  connect(ui_->btnOK, &QPushButton::clicked, this, &TfrmOptions::btnOKClick);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &TfrmOptions::reject);
  showSettings();
}

TfrmOptions::~TfrmOptions() = default;

void TfrmOptions::showSettings() {
  const TbrowserSettings settings = TbrowserSettings::load(ini_);
  forEachOptionalColumn(*this, [&](std::size_t column, QCheckBox& box) { box.setChecked(settings.shown[column]); });
  forEachCustomField(*this, [&](const TtextField& field, QLineEdit& edit, TcaptionCheckBox& box) {
    edit.setText(fromRecordText(captionOf(field, settings.captions)));
    showCaption(box, field, edit.text());  // an empty caption does not change the edit
  });
}

void TfrmOptions::btnOKClick() {
  TbrowserSettings settings;
  forEachOptionalColumn(*this, [&](std::size_t column, QCheckBox& box) { settings.shown[column] = box.isChecked(); });
  forEachCustomField(*this, [&](const TtextField& field, QLineEdit& edit, TcaptionCheckBox&) {
    captionOf(field, settings.captions) = toRecordText(edit.text()).value_or(std::string());
  });
  settings.saveOptions(ini_);
  accept();
}
