#include "help/helpViewer.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include "help/windowTopics.h"

ThelpViewer::ThelpViewer() {
  qApp->installEventFilter(this);
}

bool ThelpViewer::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) return false;
  const auto* key = static_cast<const QKeyEvent*>(event);
  if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier) return false;
  QWidget* window = static_cast<QWidget*>(watched)->window();
  const QString topic = topicOf(window);
  if (topic.isEmpty()) return false;
  show(window, topic);
  return true;
}
