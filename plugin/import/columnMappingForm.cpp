#include "import/columnMappingForm.h"

#include <QHeaderView>
#include <QStandardItemModel>
#include <algorithm>
#include <limits>
#include <utility>

#include "import/headings.h"
#include "import/importDialogs.h"
#include "import/importLine.h"
#include "import/importPreviewModel.h"
#include "import/remarkText.h"
#include "support/formControl.h"
#include "support/plainToolTip.h"
#include "support/windows1252.h"
#include "ui_columnMappingForm.h"

namespace {

constexpr int captionWidth = 40;  // average characters
constexpr int headingWidth = 18;
constexpr int previewRows = 7;  // in sight

QString foundText(std::size_t count) {
  return QStringLiteral("Found %1 column%2").arg(count).arg(count == 1 ? QString() : QStringLiteral("s"));
}

/// Shows a text with an ellipsis when it would make the dialog too wide.
void showElided(QLabel* label, const QString& text, int width) {
  const QFontMetrics metrics = label->fontMetrics();
  const QString shown = metrics.elidedText(text, Qt::ElideRight, width * metrics.averageCharWidth());
  label->setText(shown);
  label->setToolTip(shown == text ? QString() : plainToolTip(text));
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
      captions_(loadCaptions(ini_)),
      ui_(std::make_unique<Ui::TEquipRecImport>()) {
  result_ = TimportResult::cancelled;
  ui_->setupUi(this);
  setWindowFlags(windowFlags() | Qt::MSWindowsFixedSizeDialogHint);
  for (std::size_t field = 0; field < rows_.size(); ++field) setUpRow(field);
  nameCustomFields();
  if (!sample_) return;
  readHeadings();
  setUpPreview();
  showColumns();
  connect(ui_->BtnImport, &QPushButton::clicked, this, &TEquipRecImport::BtnImportClick);
  connect(ui_->BtnCancel, &QPushButton::clicked, this, &TEquipRecImport::reject);
  connect(ui_->BtnBack, &QPushButton::clicked, this, &TEquipRecImport::BtnBackClick);
}

TEquipRecImport::~TEquipRecImport() = default;

void TEquipRecImport::setUpRow(std::size_t field) {
  const char* name = importName(field);
  const Trow row = {&formControl<QComboBox>(*this, "cb", name), &formControl<QLineEdit>(*this, "Edit", name),
                    &formControl<QLabel>(*this, "lblHeading", name)};
  QPalette readOnly = row.preview->palette();
  readOnly.setColor(QPalette::Base, readOnly.color(QPalette::Window));
  row.preview->setPalette(readOnly);
  row.heading->setMinimumWidth(headingWidth * fontMetrics().averageCharWidth());
  rows_[field] = row;
}

void TEquipRecImport::nameCustomFields() {
  for (const TtextField& field : textFields) {
    if (field.customNumber == 0) continue;
    const QString caption = fromRecordText(columnHeading(static_cast<TcolumnId>(field.id), captions_));
    showElided(&formControl<QLabel>(*this, "Label", field.importName), caption, captionWidth);
    const Trow& row = rows_.at(static_cast<std::size_t>(field.id));
    row.combo->setAccessibleName(QStringLiteral("Column of %1").arg(caption));
    row.preview->setAccessibleName(QStringLiteral("Preview of %1").arg(caption));
  }
}

void TEquipRecImport::readHeadings() {
  headings_ = headingRow(sample_->headings.fields(), sample_->first.fields(), captions_);
  headings_.resize(std::min(headings_.size(), sample_->columnCount() + 1));
  start_ = startMapping(TcolumnMapping::load(ini_, static_cast<int>(sample_->columnCount())), headings_, captions_);
  ui_->lblHeadings->setVisible(options_.startRow == 1 && looksLikeHeadings(sample_->first.fields(), captions_));
}

void TEquipRecImport::setUpPreview() {
  preview_ = std::make_unique<TimportPreviewModel>(*sample_, list_.records(), captions_);
  QTableView& table = *ui_->tblPreview;
  table.setModel(preview_.get());
  const int rowHeight = fontMetrics().height() + 4;
  table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table.verticalHeader()->setDefaultSectionSize(rowHeight);
  table.horizontalHeader()->setMaximumSectionSize(captionWidth * fontMetrics().averageCharWidth());
  table.setFixedHeight(table.horizontalHeader()->sizeHint().height() + previewRows * rowHeight +
                       2 * table.frameWidth());
  ui_->ComboBoxKnown->setCurrentIndex(static_cast<int>(loadKnownChoice(ini_)));
  connect(ui_->ComboBoxKnown, &QComboBox::currentIndexChanged, this, &TEquipRecImport::showPreview);
}

QStandardItemModel* TEquipRecImport::columnItems() {
  auto* items = new QStandardItemModel(this);
  items->appendRow(new QStandardItem(QStringLiteral("<None>")));
  for (std::size_t column = 1; column <= sample_->columnCount(); ++column) {
    auto* item = new QStandardItem(QStringLiteral("Column %1").arg(column));
    item->setToolTip(plainToolTip(heading(column)));
    items->appendRow(item);
  }
  return items;
}

QString TEquipRecImport::heading(std::size_t column) const {
  return fromRecordText(column < headings_.size() ? headings_[column] : std::string_view()).simplified();
}

void TEquipRecImport::showColumns() {
  ui_->LabelNumOfColumns->setText(foundText(sample_->columnCount()));
  QStandardItemModel* items = columnItems();
  for (std::size_t field = 0; field < rows_.size(); ++field) {
    rows_[field].combo->setModel(items);
    rows_[field].combo->setCurrentIndex(start_.columns[field]);
    connect(rows_[field].combo, &QComboBox::currentIndexChanged, this, [this, field] { cbChange(field); });
    showField(field);
  }
  showPreview();
}

TcolumnMapping TEquipRecImport::mapping() const {
  TcolumnMapping mapping;
  for (std::size_t field = 0; field < rows_.size(); ++field) {
    mapping.columns[field] = rows_[field].combo->currentIndex();
  }
  return mapping;
}

TknownChoice TEquipRecImport::known() const {
  return static_cast<TknownChoice>(ui_->ComboBoxKnown->currentIndex());
}

void TEquipRecImport::cbChange(std::size_t field) {
  showField(field);
  showPreview();
}

void TEquipRecImport::showField(std::size_t field) {
  const Trow& row = rows_[field];
  const auto column = static_cast<std::size_t>(row.combo->currentIndex());
  const TfieldList fields = sample_->rows.empty() ? TfieldList(1) : sample_->rows.front().fields();
  row.preview->setText(fromRecordText(importedText(fields, column, field)));
  row.preview->setCursorPosition(0);
  showElided(row.heading, heading(column), headingWidth);
  const Trow& deviceId = rows_[fieldControlNum];
  ui_->BtnImport->setEnabled(deviceId.combo->currentIndex() > 0 && !deviceId.preview->text().isEmpty());
}

void TEquipRecImport::showPreview() {
  preview_->show(mapping(), known());
  ui_->tblPreview->resizeColumnsToContents();
}

/// What was not chosen here stays as it is stored. Without a stored mapping, a choice is kept with what it goes with.
void TEquipRecImport::storeChanges() const {
  const TcolumnMapping now = mapping();
  const bool isStored = TcolumnMapping::load(ini_, std::numeric_limits<int>::max()).has_value();
  if (isStored || now.columns[fieldControlNum] == 0) {
    now.saveChanges(ini_, start_);
  } else if (now.columns != start_.columns) {
    now.save(ini_);
  }
  if (known() != loadKnownChoice(ini_)) saveKnownChoice(ini_, known());
}

void TEquipRecImport::BtnImportClick() {
  mapping().save(ini_);
  saveKnownChoice(ini_, known());
  options_.known = known();
  TimportDialogs dialogs(options_, mapping(), sample_->columnCount(), list_, captions_, this);
  const auto end = dialogs.run();
  if (end == TimportDialogs::Tend::ownerGone) return;
  if (end == TimportDialogs::Tend::unreadable) return;  // the user may choose another file or cancel
  const bool imported = end == TimportDialogs::Tend::imported;
  result_ = imported ? TimportResult::imported : TimportResult::cancelled;
  done(imported ? Accepted : Rejected);
}

void TEquipRecImport::BtnBackClick() {
  result_ = TimportResult::back;
  done(static_cast<int>(result_));
}

/// Called however the dialog closes.
void TEquipRecImport::done(int result) {
  if (sample_) storeChanges();
  QDialog::done(result);
}
