#include "support/messageBox.h"

#include <QPointer>
#include <memory>
#include <utility>

namespace {

TmessageBoxFunction& replacement() {
  static TmessageBoxFunction function;
  return function;
}

QMessageBox::Icon toIcon(TmessageIcon icon) {
  switch (icon) {
    case TmessageIcon::information:
      return QMessageBox::Information;
    case TmessageIcon::warning:
      return QMessageBox::Warning;
    case TmessageIcon::error:
      break;
  }
  return QMessageBox::Critical;
}

}  // namespace

QMessageBox::StandardButton showMessage(QWidget* owner, const TmessageText& message,
                                        QMessageBox::StandardButtons buttons) {
  if (replacement()) return replacement()(owner, message, buttons);
  const QPointer<QMessageBox> box = new QMessageBox(owner);
  box->setTextFormat(Qt::PlainText);
  box->setWindowTitle(QString::fromLatin1(message.caption));
  box->setText(QString::fromLatin1(message.text));
  box->setIcon(toIcon(message.icon));
  box->setStandardButtons(buttons);
  const int button = box->exec();
  if (box.isNull()) return QMessageBox::NoButton;  // its owner went while it was open
  const std::unique_ptr<QMessageBox> done(box.data());
  return static_cast<QMessageBox::StandardButton>(button);
}

void replaceMessageBox(TmessageBoxFunction function) {
  replacement() = std::move(function);
}
