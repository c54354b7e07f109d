#include "browser/shortcuts.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QLineEdit>
#include <QShortcut>

void Tshortcuts::add(const QKeySequence& keys, QAbstractButton* button) {
  bind(keys, false, button, [button] { button->click(); });
}

void Tshortcuts::add(const QKeySequence& keys, const QObject* context, const std::function<void()>& action) {
  bind(keys, false, context, action);
}

void Tshortcuts::addOutsideEdits(const QKeySequence& keys, QAbstractButton* button) {
  bind(keys, true, button, [button] { button->click(); });
}

void Tshortcuts::addOutsideEdits(const QKeySequence& keys, const QObject* context,
                                 const std::function<void()>& action) {
  bind(keys, true, context, action);
}

void Tshortcuts::bind(const QKeySequence& keys, bool editsKeepThem, const QObject* context,
                      const std::function<void()>& action) {
  if (editsKeep_.isEmpty()) {
    for (QLineEdit* edit : window_->findChildren<QLineEdit*>()) edit->installEventFilter(this);
  }
  editsKeep_.insert(keys, editsKeepThem);
  auto* shortcut = new QShortcut(keys, window_);
  shortcut->setContext(Qt::WidgetWithChildrenShortcut);
  connect(shortcut, &QShortcut::activated, context, action);
}

/// Decides whether the edit or the shortcut gets the keys. An edit by itself claims only the keys that it knows on this
/// platform; Ctrl+Y is often not one of them.
bool Tshortcuts::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  const auto found = editsKeep_.constFind(QKeySequence(key->keyCombination()));
  if (found == editsKeep_.constEnd()) return false;
  event->setAccepted(*found);
  return true;
}
