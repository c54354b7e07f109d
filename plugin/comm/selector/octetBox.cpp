#include "comm/selector/octetBox.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QRegularExpressionValidator>

#include "comm/selector/octetInput.h"

ToctetBox::ToctetBox(QWidget* parent) : QLineEdit(parent) {
  setMaxLength(octetDigits);
  setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), this));
  setAcceptDrops(false);
}

QSize ToctetBox::sizeHint() const {
  return {fontMetrics().horizontalAdvance(u'0') * (octetDigits + 2), QLineEdit::sizeHint().height()};
}

void ToctetBox::paste() {
  emit pasted(QGuiApplication::clipboard()->text());
}

void ToctetBox::keyPressEvent(QKeyEvent* event) {
  event->matches(QKeySequence::Paste) ? paste() : QLineEdit::keyPressEvent(event);
}

/// The middle button pastes what is selected elsewhere, on systems that have such a thing.
void ToctetBox::mouseReleaseEvent(QMouseEvent* event) {
  const QClipboard* clipboard = QGuiApplication::clipboard();
  if (event->button() == Qt::MiddleButton && clipboard->supportsSelection()) {
    emit pasted(clipboard->text(QClipboard::Selection));
  } else {
    QLineEdit::mouseReleaseEvent(event);
  }
}
