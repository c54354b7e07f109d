#include "host/hostWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QScreen>
#include <utility>

#include "ui_hostWindow.h"

namespace {

QString withSeparator(const QString& folder) {
  const QString native = QDir::toNativeSeparators(folder);
  return native.endsWith(QDir::separator()) ? native : native + QDir::separator();
}

}  // namespace

ThostWindow::ThostWindow(const QString& modulePath, ThostFolders folders)
    : plugin_(modulePath),
      folders_(std::move(folders)),
      pluginReady_(plugin_.setup(this, this)),
      ui_(std::make_unique<Ui::ThostWindow>()) {
  ui_->setupUi(this);
  ui_->btnLaunch->setEnabled(pluginReady_);
  if (pluginReady_) {
    ui_->btnLaunch->setText(plugin_.buttonCaption());
    ui_->lblState->setText(QStringLiteral("Plug-in loaded: %1").arg(plugin_.name()));
  } else {
    ui_->lblState->setText(QStringLiteral("The plug-in could not be loaded.\n%1").arg(pluginError()));
  }
  ui_->lblFolder->setText(QStringLiteral("Records: %1").arg(withSeparator(folders_.working)));
  ui_->btnLaunch->setMinimumSize(ui_->btnLaunch->minimumSize().expandedTo(ui_->btnLaunch->sizeHint()));
  resize(size().boundedTo(screen()->availableSize() * 0.95));
  ui_->btnLaunch->setFocus();
  setAttribute(Qt::WA_KeyboardFocusChange);  // shows the focus from the start
  connect(ui_->btnLaunch, &QPushButton::clicked, this, &ThostWindow::btnLaunchClick);
}

ThostWindow::~ThostWindow() {
  if (pluginFrame_.isNull()) return;
  pluginFrame_->disconnect(this);
  const std::unique_ptr<QWidget> frame(pluginFrame_.data());  // it saves before the module is unloaded
}

QString ThostWindow::programFolder() const {
  return withSeparator(folders_.program);
}

QString ThostWindow::workingFolder() const {
  return withSeparator(folders_.working);
}

void ThostWindow::returnToMainWindow() {
  if (!pluginFrame_.isNull()) pluginFrame_->deleteLater();
}

QString ThostWindow::pluginError() const {
  return pluginReady_ ? QString() : plugin_.error();
}

void ThostWindow::closeEvent(QCloseEvent* event) {
  event->accept();
  QApplication::quit();
}

void ThostWindow::btnLaunchClick() {
  ui_->btnLaunch->setEnabled(false);
  pluginFrame_ = plugin_.createMainForm();
  if (pluginFrame_.isNull()) {
    ui_->lblState->setText(QStringLiteral("The plug-in's window could not be opened."));
    ui_->btnLaunch->setEnabled(true);
    return;
  }
  pluginFrame_->setAttribute(Qt::WA_DeleteOnClose);
  connect(pluginFrame_, &QObject::destroyed, this, &ThostWindow::pluginFrameDestroyed);
  pluginFrame_->show();
  hide();
}

void ThostWindow::pluginFrameDestroyed() {
  ui_->btnLaunch->setEnabled(true);
  show();
  ui_->btnLaunch->setFocus();
}
