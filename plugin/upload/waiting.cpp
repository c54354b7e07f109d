#include "upload/waiting.h"

#include <QCoreApplication>
#include <QPointer>

#include "ui_waiting.h"
#include "upload/workerDialog.h"

namespace {

/// The window of the last upload that was waited for.
QPointer<TfrmWaiting>& lastWindow() {
  static QPointer<TfrmWaiting> window;
  return window;
}

}  // namespace

TfrmWaiting::TfrmWaiting(std::unique_ptr<TworkerDialog> dialog, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::TfrmWaiting>()) {
  setWindowFlags(Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
  ui_->setupUi(this);
  const TdriverThread& worker = dialog->worker();
  connect(&worker, &TdriverThread::exchangeEnded, this, &QWidget::hide);
  connect(&worker, &QThread::finished, this, &QObject::deleteLater);
  connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, &QObject::deleteLater);
  dialog->setParent(this, dialog->windowFlags());
  if (!worker.isRunning()) deleteLater();  // it has just ended
  static_cast<void>(dialog.release());     // a child now
}

TfrmWaiting::~TfrmWaiting() = default;

void TfrmWaiting::showFor(std::unique_ptr<TworkerDialog> dialog, QWidget* parent) {
  std::unique_ptr<TfrmWaiting> window(new TfrmWaiting(std::move(dialog), parent));
  lastWindow() = window.get();
  window->show();
  static_cast<void>(window.release());  // deletes itself
}

bool TfrmWaiting::showOpen() {
  if (lastWindow().isNull()) return false;
  lastWindow()->show();
  lastWindow()->raise();
  lastWindow()->activateWindow();
  return true;
}
