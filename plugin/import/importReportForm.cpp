#include "import/importReportForm.h"

#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QSaveFile>
#include <utility>

#include "import/importMessages.h"
#include "import/importReportModel.h"
#include "support/csvLine.h"
#include "support/messageBox.h"
#include "support/modalDialog.h"
#include "ui_importReportForm.h"

namespace {

QStringList cellsOf(const QAbstractItemModel& model, int row) {
  QStringList cells;
  for (int column = 0; column < model.columnCount(); ++column) cells << model.index(row, column).data().toString();
  return cells;
}

QStringList headingsOf(const QAbstractItemModel& model) {
  QStringList headings;
  for (int column = 0; column < model.columnCount(); ++column) {
    headings << model.headerData(column, Qt::Horizontal).toString();
  }
  return headings;
}

std::string csvLine(const QStringList& cells) {
  std::string line;
  for (qsizetype i = 0; i < cells.size(); ++i) addCsvCell(line, cells[i].toStdString(), i == 0);
  return line + "\r\n";
}

std::string csvOf(const QAbstractItemModel& model) {
  std::string text = "\xEF\xBB\xBF" + csvLine(headingsOf(model));
  for (int row = 0; row < model.rowCount(); ++row) text += csvLine(cellsOf(model, row));
  return text;
}

QString countText(const TimportReport& report) {
  if (report.count() == 1) return QStringLiteral("1 remark");
  if (report.count() == report.kept().size()) return QStringLiteral("%1 remarks").arg(report.count());
  return QStringLiteral("%1 remarks, of which the first %2 are shown").arg(report.count()).arg(report.kept().size());
}

}  // namespace

TfrmImportReport::TfrmImportReport(const TimportReport& report, Tcaptions captions, QWidget* parent)
    : QDialog(parent),
      model_(std::make_unique<TimportReportModel>(report, std::move(captions))),
      ui_(std::make_unique<Ui::TfrmImportReport>()) {
  ui_->setupUi(this);
  ui_->lblCount->setText(countText(report));
  ui_->tblReport->setModel(model_.get());
  ui_->tblReport->verticalHeader()->hide();
  ui_->tblReport->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
  const int character = fontMetrics().averageCharWidth();
  ui_->tblReport->setColumnWidth(0, 9 * character);
  ui_->tblReport->setColumnWidth(1, 24 * character);
  ui_->tblReport->horizontalHeader()->setStretchLastSection(true);
  ui_->tblReport->selectRow(0);
  ui_->tblReport->installEventFilter(this);
  connect(ui_->btnSave, &QPushButton::clicked, this, &TfrmImportReport::btnSaveClick);
  connect(ui_->btnClose, &QPushButton::clicked, this, &TfrmImportReport::accept);
}

TfrmImportReport::~TfrmImportReport() = default;

/// The table itself would copy the current cell.
bool TfrmImportReport::eventFilter(QObject* watched, QEvent* event) {
  const auto* key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event) : nullptr;
  if (key == nullptr || !key->matches(QKeySequence::Copy)) return QDialog::eventFilter(watched, event);
  copyRows();
  return true;
}

void TfrmImportReport::copyRows() const {
  const QItemSelectionModel* selection = ui_->tblReport->selectionModel();
  QString text = headingsOf(*model_).join(u'\t') + u'\n';
  for (int row = 0; row < model_->rowCount(); ++row) {
    if (!selection->hasSelection() || selection->isRowSelected(row)) text += cellsOf(*model_, row).join(u'\t') + u'\n';
  }
  QGuiApplication::clipboard()->setText(text);
}

void TfrmImportReport::btnSaveClick() {
  TmodalDialog<QFileDialog> dialog(this);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setDefaultSuffix(QStringLiteral("csv"));
  dialog->setNameFilter(QStringLiteral("Comma Separated Value files (*.csv)"));
  dialog->selectFile(QStringLiteral("import report.csv"));
  if (dialog.exec() != Accepted) return;
  QSaveFile file(dialog->selectedFiles().value(0));
  const std::string text = csvOf(*model_);
  const auto size = static_cast<qint64>(text.size());
  if (file.open(QIODevice::WriteOnly) && file.write(text.data(), size) == size && file.commit()) return;
  showMessage(this, reportNotSaved, QMessageBox::Ok, file.errorString());
}
