#include "support/messageBox.h"

#include <QApplication>
#include <QGridLayout>
#include <utility>

#include "support/modalDialog.h"

namespace {

TmessageBoxFunction& replacement() {
  static TmessageBoxFunction function;
  return function;
}

QMessageBox::Icon toIcon(TmessageIcon icon) {
  switch (icon) {
    case TmessageIcon::information:
      return QMessageBox::Information;
    case TmessageIcon::question:
      return QMessageBox::Question;
    case TmessageIcon::warning:
      return QMessageBox::Warning;
    case TmessageIcon::error:
      break;
  }
  return QMessageBox::Critical;
}

/// By itself the box would be as narrow as its text allows, and the informative text a tall column.
void widen(QMessageBox& box) {
  constexpr int characters = 60;
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  if (grid == nullptr) return;
  const int width = characters * box.fontMetrics().averageCharWidth();
  grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

void fill(QMessageBox& box, const TmessageText& message, const QString& informativeText) {
  box.setTextFormat(Qt::PlainText);
  box.setWindowTitle(QString::fromLatin1(message.caption));
  box.setText(QString::fromLatin1(message.text));
  box.setInformativeText(informativeText);
  box.setIcon(toIcon(message.icon));
  if (!informativeText.isEmpty()) widen(box);
}

void restore(QWidget* owner) {
  if (owner == nullptr || !owner->window()->isMinimized()) return;
  owner->window()->setWindowState(owner->window()->windowState() & ~Qt::WindowMinimized);
}

}  // namespace

QMessageBox::StandardButton showMessage(QWidget* owner, const TmessageText& message,
                                        QMessageBox::StandardButtons buttons, const QString& informativeText) {
  if (replacement()) return replacement()(owner, message, buttons, informativeText);
  TmodalDialog<QMessageBox> box(owner);
  fill(*box.get(), message, informativeText);
  box->setStandardButtons(buttons);
  return static_cast<QMessageBox::StandardButton>(box.exec());
}

void showMessageInFront(QWidget* owner, const TmessageText& message, const QString& informativeText) {
  if (replacement()) {
    replacement()(owner, message, QMessageBox::Ok, informativeText);
    return;
  }
  restore(owner);
  TmodalDialog<QMessageBox> box(owner);
  fill(*box.get(), message, informativeText);
  box->setWindowFlag(Qt::WindowStaysOnTopHint);
  const auto toFront = [shown = box.get()] {
    shown->raise();
    shown->activateWindow();
    QApplication::alert(shown);
  };
  QMetaObject::invokeMethod(box.get(), toFront, Qt::QueuedConnection);
  box.exec();
}

void replaceMessageBox(TmessageBoxFunction function) {
  replacement() = std::move(function);
}
