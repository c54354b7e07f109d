#include "browser/scanBuffer.h"

#include <QKeyEvent>
#include <QWidget>
#include <chrono>
#include <utility>

namespace {

constexpr std::chrono::milliseconds longestPause(1500);

bool isEnter(const QKeyEvent& key) {
  return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

bool endsText(const QKeyEvent& key) {
  return isEnter(key) && !key.isAutoRepeat();
}

/// Whether a key types something. A blank at the beginning does not count: the space bar may mean something else.
bool isTyped(const QKeyEvent& key, bool isFirst) {
  const auto control = Qt::ControlModifier | Qt::MetaModifier;
  const bool isAltGr = key.modifiers().testFlag(Qt::AltModifier) && key.modifiers().testFlag(Qt::ControlModifier);
  if ((key.modifiers() & control) != 0 && !isAltGr) return false;
  return !key.text().isEmpty() && key.text().front().isPrint() && !(isFirst && key.key() == Qt::Key_Space);
}

}  // namespace

TscanBuffer::TscanBuffer(QWidget* widget) : QObject(widget) {
  pause_.setSingleShot(true);
  pause_.setInterval(longestPause);
  connect(&pause_, &QTimer::timeout, this, [this] { change({}); });
  widget->installEventFilter(this);
}

bool TscanBuffer::eventFilter(QObject* /*watched*/, QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
      return press(*static_cast<QKeyEvent*>(event));
    case QEvent::KeyRelease:
      if (!isEnding_ || !endsText(*static_cast<QKeyEvent*>(event))) return false;
      isEnding_ = false;
      emit entered(std::exchange(text_, {}));
      return true;  // the receiver may have deleted this
    case QEvent::FocusOut:
      isEnding_ = false;
      if (!text_.isEmpty()) change({});
      return false;
    default:
      return false;
  }
}

/// Returns whether the key belongs to the text.
bool TscanBuffer::press(const QKeyEvent& key) {
  if (isTyped(key, text_.isEmpty())) {
    change(text_ + key.text());
    return true;
  }
  if (text_.isEmpty()) return false;
  switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      pause_.stop();
      isEnding_ = true;
      return true;
    case Qt::Key_Backspace:
      change(text_.chopped(1));
      return true;
    case Qt::Key_Escape:
      change({});
      return true;
    default:
      return false;
  }
}

void TscanBuffer::change(const QString& text) {
  text_ = text;
  text_.isEmpty() ? pause_.stop() : pause_.start();
  emit typed(text_);
}
