#include "import/columnMappingForm.h"

#include <QStringListModel>
#include <utility>

#include "import/importDialogs.h"
#include "import/importLine.h"
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

/// Shows a caption that the user chose in a label, with an ellipsis where it would make the dialog too wide.
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
  rows_ = {{{ui_->cbDeviceID, ui_->EditDeviceID},
            {ui_->cbDesc, ui_->EditDesc},
            {ui_->cbMake, ui_->EditMake},
            {ui_->cbModel, ui_->EditModel},
            {ui_->cbCustom1, ui_->EditCustom1},
            {ui_->cbCustom2, ui_->EditCustom2},
            {ui_->cbCustom3, ui_->EditCustom3},
            {ui_->cbTestProc, ui_->EditTestProc}}};
  QPalette readOnly = ui_->EditDeviceID->palette();
  readOnly.setColor(QPalette::Base, readOnly.color(QPalette::Window));
  auto* items = new QStringListModel(columnItems(columnCount()), this);
  for (std::size_t field = 0; field < rows_.size(); ++field) {
    rows_[field].combo->setModel(items);
    rows_[field].preview->setPalette(readOnly);
    connect(rows_[field].combo, &QComboBox::currentIndexChanged, this, [this, field] { cbChange(field); });
  }
  connect(ui_->BtnImport, &QPushButton::clicked, this, &TEquipRecImport::BtnImportClick);
  connect(ui_->BtnCancel, &QPushButton::clicked, this, &TEquipRecImport::reject);
  connect(ui_->BtnBack, &QPushButton::clicked, this, &TEquipRecImport::BtnBackClick);
}

void TEquipRecImport::nameCustomFields() {
  const std::array<QLabel*, 3> labels = {ui_->LabelCustom1, ui_->LabelCustom2, ui_->LabelCustom3};
  for (std::size_t i = 0; i < labels.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    captions_[i] = ini_.readString("CUSTOMFIELDS", "FIELD" + number + "NAME", "Custom " + number);
    const QString caption = fromRecordText(captions_[i]);
    showCaption(labels[i], caption);
    rows_[fieldCustom1 + i].combo->setAccessibleName(QStringLiteral("Column of %1").arg(caption));
    rows_[fieldCustom1 + i].preview->setAccessibleName(QStringLiteral("Preview of %1").arg(caption));
  }
}

void TEquipRecImport::showColumns() {
  ui_->LabelNumOfColumns->setText(foundText(columnCount()));
  const TcolumnMapping start = startMapping();
  for (std::size_t field = 0; field < rows_.size(); ++field) rows_[field].combo->setCurrentIndex(start.columns[field]);
}

/// The mapping that was used last, or else what the headings say.
TcolumnMapping TEquipRecImport::startMapping() const {
  if (const auto stored = TcolumnMapping::load(ini_, columnCount())) return *stored;
  TfieldList headings = tokenise(sample_->headings, options_.delimiter, options_.quotes);
  headings.resize(std::min(headings.size(), fields_.size()));
  return TcolumnMapping::fromHeadings(headings, captions_);
}

TcolumnMapping TEquipRecImport::mapping() const {
  TcolumnMapping mapping;
  for (std::size_t field = 0; field < rows_.size(); ++field)
    mapping.columns[field] = rows_[field].combo->currentIndex();
  return mapping;
}

void TEquipRecImport::cbChange(std::size_t field) {
  const auto column = static_cast<std::size_t>(rows_[field].combo->currentIndex());
  rows_[field].preview->setText(fromRecordText(importedText(fields_, column)));
  rows_[field].preview->setCursorPosition(0);
  ui_->BtnImport->setEnabled(ui_->cbDeviceID->currentIndex() > 0 && !ui_->EditDeviceID->text().isEmpty());
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
