#include "help/helpWindow.h"

#include <QFile>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QWindow>

#include "help/windowTopics.h"
#include "support/fitToScreen.h"
#include "support/readableLink.h"
#include "ui_helpWindow.h"

namespace {

const QString guideFolder = QStringLiteral("qrc:/help/");

QString guideContents() {
  QFile file(QStringLiteral(":/help/EquipmentRecord.hhc"));
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

ThelpWindow::ThelpWindow() : ui_(std::make_unique<Ui::ThelpWindow>()) {
  ui_->setupUi(this);
  setWindowFlags(Qt::Window);
  setAttribute(Qt::WA_QuitOnClose, false);
  const QColor link = readableLink(ui_->txtPage->palette(), QPalette::Base);
  ui_->txtPage->document()->setDefaultStyleSheet(QStringLiteral("a { color: %1; }").arg(link.name()));
  ui_->splHelp->setStretchFactor(1, 1);
  ui_->splHelp->setSizes({200, 540});
  fillContents();
  connectControls();
  fitToScreen(*this);
}

ThelpWindow::~ThelpWindow() = default;

void ThelpWindow::fillContents() {
  static const QRegularExpression entry(QStringLiteral(R"re("Name" value="([^"]*)".*"Local" value="([^"]*)")re"));
  auto found = entry.globalMatch(guideContents());
  while (found.hasNext()) {
    const auto match = found.next();
    auto* item = new QListWidgetItem(match.captured(1), ui_->lstContents);
    item->setData(Qt::UserRole, QUrl(guideFolder + match.captured(2)));
  }
}

void ThelpWindow::connectControls() {
  connect(ui_->btnBack, &QAbstractButton::clicked, ui_->txtPage, &QTextBrowser::backward);
  connect(ui_->btnForward, &QAbstractButton::clicked, ui_->txtPage, &QTextBrowser::forward);
  connect(ui_->btnContents, &QAbstractButton::clicked, this, [this] { showTopic(QString::fromLatin1(guideStart)); });
  connect(ui_->txtPage, &QTextBrowser::backwardAvailable, ui_->btnBack, &QWidget::setEnabled);
  connect(ui_->txtPage, &QTextBrowser::forwardAvailable, ui_->btnForward, &QWidget::setEnabled);
  connect(ui_->txtPage, &QTextBrowser::sourceChanged, this, &ThelpWindow::txtPageSourceChanged);
  connect(ui_->lstContents, &QListWidget::currentItemChanged, this, &ThelpWindow::lstContentsRowChanged);
}

void ThelpWindow::showInFrontOf(QWidget* owner, const QString& topic) {
  hide();   // a modal dialog that opened meanwhile blocks it until it is shown again
  winId();  // creates the window's handle
  windowHandle()->setTransientParent(owner == nullptr ? nullptr : owner->window()->windowHandle());
  if (owner != nullptr) connect(owner, &QObject::destroyed, this, &QWidget::close, Qt::UniqueConnection);
  showTopic(topic);
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
  ui_->txtPage->setFocus();
}

void ThelpWindow::showTopic(const QString& topic) {
  ui_->txtPage->setSource(QUrl(guideFolder + topic));
}

void ThelpWindow::lstContentsRowChanged(const QListWidgetItem* item) {
  if (item != nullptr) ui_->txtPage->setSource(item->data(Qt::UserRole).toUrl());
}

void ThelpWindow::txtPageSourceChanged(const QUrl& source) {
  const QSignalBlocker noPageChange(ui_->lstContents);
  const QUrl page = source.adjusted(QUrl::RemoveFragment);
  for (int row = 0; row < ui_->lstContents->count(); ++row) {
    if (ui_->lstContents->item(row)->data(Qt::UserRole).toUrl() == page) ui_->lstContents->setCurrentRow(row);
  }
}
