#include "browser/shortcuts.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QLineEdit>
#include <QShortcut>

void Tshortcuts::add(const QKeySequence& keys, QAbstractButton* button) {
  add(keys, button, [button] { button->click(); });
}

void Tshortcuts::add(const QKeySequence& keys, const QObject* context, const std::function<void()>& action) {
  if (keys_.isEmpty()) {
    for (QLineEdit* edit : window_->findChildren<QLineEdit*>()) edit->installEventFilter(this);
  }
  keys_ << keys;
  auto* shortcut = new QShortcut(keys, window_);
  shortcut->setContext(Qt::WidgetWithChildrenShortcut);
  connect(shortcut, &QShortcut::activated, context, action);
}

/// Keeps an edit from claiming these keys before the shortcuts get them.
bool Tshortcuts::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  if (!keys_.contains(QKeySequence(key->keyCombination()))) return false;
  event->ignore();
  return true;
}
