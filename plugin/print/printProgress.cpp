#include "print/printProgress.h"

#include <QCoreApplication>
#include <QPointer>

#include "ui_printProgress.h"

namespace {

constexpr qint64 noticeable = 100;  // milliseconds

}  // namespace

TfrmPrintProgress::TfrmPrintProgress(std::size_t pageCount, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::CustomizeWindowHint),
      ui_(std::make_unique<Ui::TfrmPrintProgress>()),
      pageCount_(pageCount) {
  ui_->setupUi(this);
  ui_->barPages->setMaximum(static_cast<int>(pageCount));
  connect(ui_->btnCancel, &QPushButton::clicked, this, &TfrmPrintProgress::reject);
  connect(this, &TfrmPrintProgress::rejected, this, [this] { cancelled_ = true; });
  sinceStart_.start();
}

TfrmPrintProgress::~TfrmPrintProgress() = default;

bool TfrmPrintProgress::startPage(std::size_t page) {
  if (!isVisible() && sinceStart_.elapsed() < noticeable) return true;
  ui_->barPages->setValue(static_cast<int>(page));
  ui_->lblPage->setText(QStringLiteral("Page %1 of %2").arg(page + 1).arg(pageCount_));
  show();
  const QPointer<TfrmPrintProgress> self(this);
  QCoreApplication::processEvents();
  return !self.isNull() && !cancelled_;
}
