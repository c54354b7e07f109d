#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <functional>

/// Runs `act` on the dialog of that name as soon as it is open.
inline void whenOpen(const char* dialogName, const std::function<void(QWidget*)>& act) {
  auto* timer = new QTimer(QCoreApplication::instance());
  QObject::connect(timer, &QTimer::timeout, timer, [timer, act, name = QString::fromLatin1(dialogName)] {
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog == nullptr || dialog->objectName() != name) return;
    timer->stop();
    timer->deleteLater();
    act(dialog);
  });
  timer->start(0);
}

/// A dialog's control of that name, which must be there.
template <typename Control>
Control* in(const QWidget* dialog, const char* name) {
  auto* control = dialog->findChild<Control*>(QString::fromLatin1(name));
  if (control == nullptr) qFatal("no control %s", name);
  return control;
}
