#include "browser/statusLabel.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

#include "support/plainToolTip.h"
#include "support/readableLink.h"

TstatusLabel::TstatusLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

void TstatusLabel::setStatus(const QString& text) {
  if (text == this->text()) return;
  setText(text);
  setAccessibleName(text);  // sends the event that makes screen readers say it
  showToolTip();
}

void TstatusLabel::showToolTip() {
  const bool fits = fontMetrics().horizontalAdvance(text()) <= contentsRect().width();
  setToolTip(fits ? QString() : plainToolTip(text()));
}

/// Cut in the middle: the counts at the beginning and the file name at the end matter most.
void TstatusLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
  style()->drawItemText(&painter, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(), shown,
                        foregroundRole());
}

void TstatusLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  showToolTip();
}

void TlinkLabel::setLink(const QString& text) {
  const QString link = QStringLiteral("<a href=\"#\" style=\"color:%1\">%2</a>");
  setText(text.isEmpty() ? QString() : link.arg(readableLink(palette(), QPalette::Window).name(), text));
  setAccessibleName(text);
  setVisible(!text.isEmpty());
}

void TlinkLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) setLink(accessibleName());
}

/// A label's own way with keys would select the link only with a second Tab.
void TlinkLabel::keyPressEvent(QKeyEvent* event) {
  const bool follows = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
  if (!follows) return QLabel::keyPressEvent(event);
  emit linkActivated(QStringLiteral("#"));
}

void TlinkLabel::paintEvent(QPaintEvent* event) {
  QLabel::paintEvent(event);
  if (!hasFocus()) return;
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Highlight));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
