#include "browser/changeForm.h"

#include <QPushButton>
#include <algorithm>

#include "browser/statusText.h"
#include "editor/testProcGrid.h"
#include "support/recordText.h"
#include "support/windows1252.h"
#include "ui_changeForm.h"

namespace {

constexpr int leastNumberWidth = 48;

}  // namespace

TfrmChange::TfrmChange(std::size_t recordCount, const TtestProcTable& titles, const Tcaptions& captions,
                       QWidget* parent)
    : QDialog(parent),
      list_(titles),
      model_(std::make_unique<TtestProcModel>(list_)),
      ui_(std::make_unique<Ui::TfrmChange>()) {
  ui_->setupUi(this);
  ui_->lblCount->setText(recordCount == 1 ? QStringLiteral("The selected record gets:")
                                          : QStringLiteral("All %1 selected records get:").arg(recordCount));
  ui_->lstTestProc->setModel(model_.get());
  const int numberWidth = ui_->lstTestProc->fontMetrics().horizontalAdvance(QStringLiteral("000000"));
  ui_->lstTestProc->setColumnWidth(TtestProcList::numberColumn, std::max(leastNumberWidth, numberWidth));
  setUpFields(captions);
  showTitles();
  connect(ui_->cbField, &QComboBox::currentIndexChanged, this, &TfrmChange::cbFieldChanged);
  connect(ui_->txtTestProcSearch, &QLineEdit::textChanged, this, &TfrmChange::showTitles);
  connect(ui_->lstTestProc, &TtestProcGrid::markChanged, this, &TfrmChange::showButtons);
  connect(ui_->lstTestProc, &TheadedGrid::headerPressed, this, [this](int column) {
    order_.press(column);
    showTitles();
  });
  connect(ui_->btnOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &QDialog::reject);
  cbFieldChanged();
}

TfrmChange::~TfrmChange() {
  ui_->lstTestProc->disconnect(this);
}

void TfrmChange::setUpFields(const Tcaptions& captions) {
  for (const Tcolumn& column : allColumns) {
    const bool isField = column.id < fieldCount && column.id != fieldControlNum;
    if (!isField && column.id != columnTestProc) continue;
    const QString heading = fromRecordText(columnHeading(column.id, captions));
    ui_->cbField->addItem(heading.isEmpty() ? QString::fromLatin1(column.heading) : heading, column.id);
  }
}

bool TfrmChange::isTestProc() const {
  return ui_->cbField->currentData().toUInt() == columnTestProc;
}

void TfrmChange::cbFieldChanged() {
  ui_->pages->setCurrentWidget(isTestProc() ? ui_->pagTestProc : ui_->pagText);
  const auto field = static_cast<int>(ui_->cbField->currentData().toUInt());
  if (!isTestProc()) ui_->txtValue->setMaxLength(static_cast<int>(textField(field).size) - 1);
  showButtons();
}

void TfrmChange::showTitles() {
  if (const auto text = toRecordText(ui_->txtTestProcSearch->text())) {
    list_.search(*text);
  } else {
    list_.showNone();  // no title can contain such a character
  }
  list_.sort(order_);
  model_->refill();
  ui_->lstTestProc->showList(list_, order_);
  showButtons();
}

void TfrmChange::showButtons() {
  ui_->btnOK->setEnabled(!isTestProc() || ui_->lstTestProc->markedRow());
}

Tassignment TfrmChange::assignment() const {
  const auto column = static_cast<TcolumnId>(ui_->cbField->currentData().toUInt());
  if (isTestProc()) return {column, {}, list_.at(ui_->lstTestProc->markedRow().value())};
  const std::string text = ui_->txtValue->recordText();
  return {column, std::string(trimmedText(text)), minTestProc};
}
