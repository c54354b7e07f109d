#include "comm/selector/octetBox.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QRegularExpressionValidator>
#include <algorithm>

namespace {

/// Only ASCII digits count. Values above 255 are allowed here.
bool isOctetText(const QString& text) {
  return !text.isEmpty() && text.size() <= octetDigits &&
         std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

}  // namespace

std::optional<int> octetValue(const QString& text) {
  if (!isOctetText(text) || text.toInt() > 255) return std::nullopt;
  return text.toInt();
}

QStringList pastedOctets(const QString& text) {
  const QStringList parts = text.trimmed().split(u'.');
  const bool whole = parts.size() == 1 || parts.size() == 4;
  return whole && std::all_of(parts.begin(), parts.end(), isOctetText) ? parts : QStringList();
}

ToctetBox::ToctetBox(QWidget* parent) : QLineEdit(parent) {
  setMaxLength(octetDigits);
  setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), this));
  setAcceptDrops(false);
}

QSize ToctetBox::sizeHint() const {
  return {fontMetrics().horizontalAdvance(u'0') * (octetDigits + 2), QLineEdit::sizeHint().height()};
}

ToctetMove ToctetBox::moveByKey(const QKeyEvent& key) const {
  if (key.text() == u"." || key.text() == u",") return ToctetMove::nextBox;
  const bool plain = (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  if (!plain || hasSelectedText()) return ToctetMove::none;
  switch (key.key()) {
    case Qt::Key_Left:
      return cursorPosition() == 0 ? ToctetMove::previousEnd : ToctetMove::none;
    case Qt::Key_Right:
      return cursorPosition() == text().size() ? ToctetMove::nextStart : ToctetMove::none;
    case Qt::Key_Backspace:
      return text().isEmpty() ? ToctetMove::previousEnd : ToctetMove::none;
    default:
      return ToctetMove::none;
  }
}

void ToctetBox::paste() {
  emit pasted(QGuiApplication::clipboard()->text());
}

void ToctetBox::keyPressEvent(QKeyEvent* event) {
  event->matches(QKeySequence::Paste) ? paste() : QLineEdit::keyPressEvent(event);
}

/// The middle button pastes the selection, on systems that have one.
void ToctetBox::mouseReleaseEvent(QMouseEvent* event) {
  const QClipboard* clipboard = QGuiApplication::clipboard();
  if (event->button() == Qt::MiddleButton && clipboard->supportsSelection()) {
    emit pasted(clipboard->text(QClipboard::Selection));
  } else {
    QLineEdit::mouseReleaseEvent(event);
  }
}
