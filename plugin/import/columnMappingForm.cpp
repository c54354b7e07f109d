#include "import/columnMappingForm.h"

#include <QStringListModel>
#include <utility>

#include "import/importDialogs.h"
#include "import/importLine.h"
#include "support/formControl.h"
#include "support/windows1252.h"
#include "ui_columnMappingForm.h"

namespace {

constexpr int captionWidth = 40;  // average characters

QString foundText(int count) {
  return QStringLiteral("Found %1 column%2").arg(count).arg(count == 1 ? QString() : QStringLiteral("s"));
}

QStringList columnItems(int count) {
  QStringList items(QStringLiteral("<None>"));
  for (int column = 1; column <= count; ++column) items << QStringLiteral("Column %1").arg(column);
  return items;
}

/// Shows a caption that the user chose, with an ellipsis when it would make the dialog too wide.
void showCaption(QLabel* label, const QString& caption) {
  const QFontMetrics metrics = label->fontMetrics();
  const QString shown = metrics.elidedText(caption, Qt::ElideRight, captionWidth * metrics.averageCharWidth());
  label->setText(shown);
  if (shown != caption) label->setToolTip(caption.toHtmlEscaped());
}

}  // namespace

TEquipRecImport::TEquipRecImport(TimportOptions options, TlistOwner& list, TiniFile ini, TimportResult& result,
                                 QWidget* parent)
    : QDialog(parent),
      options_(std::move(options)),
      list_(list),
      ini_(std::move(ini)),
      result_(result),
      sample_(TimportSample::read(options_)),
      fields_(sample_ ? tokenise(sample_->line, options_.delimiter, options_.quotes) : TfieldList(1)),
      captions_(loadCaptions(ini_)),
      ui_(std::make_unique<Ui::TEquipRecImport>()) {
  result_ = TimportResult::cancelled;
  setUpForm();
  nameCustomFields();
  if (sample_) showColumns();
}

TEquipRecImport::~TEquipRecImport() = default;

void TEquipRecImport::setUpForm() {
  ui_->setupUi(this);
  setWindowFlags(windowFlags() | Qt::MSWindowsFixedSizeDialogHint);
  auto* items = new QStringListModel(columnItems(columnCount()), this);
  for (std::size_t field = 0; field < rows_.size(); ++field) {
    setUpRow(field);
    rows_[field].combo->setModel(items);
    connect(rows_[field].combo, &QComboBox::currentIndexChanged, this, [this, field] { cbChange(field); });
  }
  connect(ui_->BtnImport, &QPushButton::clicked, this, &TEquipRecImport::BtnImportClick);
  connect(ui_->BtnCancel, &QPushButton::clicked, this, &TEquipRecImport::reject);
  connect(ui_->BtnBack, &QPushButton::clicked, this, &TEquipRecImport::BtnBackClick);
}

void TEquipRecImport::setUpRow(std::size_t field) {
  const char* name = importName(field);
  const Trow row = {&formControl<QComboBox>(*this, "cb", name), &formControl<QLineEdit>(*this, "Edit", name)};
  QPalette readOnly = row.preview->palette();
  readOnly.setColor(QPalette::Base, readOnly.color(QPalette::Window));
  row.preview->setPalette(readOnly);
  rows_[field] = row;
}

void TEquipRecImport::nameCustomFields() {
  for (const TtextField& field : textFields) {
    if (field.customNumber == 0) continue;
    const QString caption = fromRecordText(columnHeading(static_cast<TcolumnId>(field.id), captions_));
    showCaption(&formControl<QLabel>(*this, "Label", field.importName), caption);
    const Trow& row = rows_.at(static_cast<std::size_t>(field.id));
    row.combo->setAccessibleName(QStringLiteral("Column of %1").arg(caption));
    row.preview->setAccessibleName(QStringLiteral("Preview of %1").arg(caption));
  }
}

void TEquipRecImport::showColumns() {
  ui_->LabelNumOfColumns->setText(foundText(columnCount()));
  const TcolumnMapping start = startMapping();
  for (std::size_t field = 0; field < rows_.size(); ++field) rows_[field].combo->setCurrentIndex(start.columns[field]);
}

/// The mapping that was used last; otherwise what the headings say.
TcolumnMapping TEquipRecImport::startMapping() const {
  if (const auto stored = TcolumnMapping::load(ini_, columnCount())) return *stored;
  TfieldList headings = tokenise(sample_->headings, options_.delimiter, options_.quotes);
  headings.resize(std::min(headings.size(), fields_.size()));
  return TcolumnMapping::fromHeadings(headings, captions_);
}

TcolumnMapping TEquipRecImport::mapping() const {
  TcolumnMapping mapping;
  for (std::size_t field = 0; field < rows_.size(); ++field) {
    mapping.columns[field] = rows_[field].combo->currentIndex();
  }
  return mapping;
}

void TEquipRecImport::cbChange(std::size_t field) {
  const auto column = static_cast<std::size_t>(rows_[field].combo->currentIndex());
  rows_[field].preview->setText(fromRecordText(importedText(fields_, column)));
  rows_[field].preview->setCursorPosition(0);
  const Trow& deviceId = rows_[fieldControlNum];
  ui_->BtnImport->setEnabled(deviceId.combo->currentIndex() > 0 && !deviceId.preview->text().isEmpty());
}

void TEquipRecImport::BtnImportClick() {
  mapping().save(ini_);
  TimportDialogs dialogs(options_, mapping(), fields_.size() - 1, list_, this);
  const auto end = dialogs.run();
  if (end == TimportDialogs::Tend::ownerGone) return;
  if (end == TimportDialogs::Tend::unreadable) return;  // the user may choose another file or cancel
  const bool imported = end == TimportDialogs::Tend::imported;
  result_ = imported ? TimportResult::imported : TimportResult::cancelled;
  done(imported ? Accepted : Rejected);
}

void TEquipRecImport::BtnBackClick() {
  mapping().save(ini_);
  result_ = TimportResult::back;
  done(static_cast<int>(result_));
}
