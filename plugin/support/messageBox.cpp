#include "support/messageBox.h"

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

}  // namespace

QMessageBox::StandardButton showMessage(QWidget* owner, const TmessageText& message,
                                        QMessageBox::StandardButtons buttons, const QString& informativeText) {
  if (replacement()) return replacement()(owner, message, buttons, informativeText);
  TmodalDialog<QMessageBox> box(owner);
  box->setTextFormat(Qt::PlainText);
  box->setWindowTitle(QString::fromLatin1(message.caption));
  box->setText(QString::fromLatin1(message.text));
  box->setInformativeText(informativeText);
  box->setIcon(toIcon(message.icon));
  box->setStandardButtons(buttons);
  return static_cast<QMessageBox::StandardButton>(box.exec());
}

void replaceMessageBox(TmessageBoxFunction function) {
  replacement() = std::move(function);
}
