#include "tools/dialogs.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <memory>

namespace {

QByteArray nameOf(const QWidget* window) {
  const QByteArray name = window->objectName().toLatin1();
  return name.isEmpty() ? QByteArray(window->metaObject()->className()) : name;
}

class Tdriver final : public QObject {
 public:
  explicit Tdriver(QObject* parent) : QObject(parent) {
    patience_.setInterval(std::chrono::seconds(20));  // sanitizers are slow
    patience_.callOnTimeout(this, [this] {
      const QWidget* dialog = QApplication::activeModalWidget();
      if (dialog == nullptr) return patience_.stop();
      const QByteArray next = steps_.isEmpty() ? "" : "; the next step waits for " + steps_.first().dialog;
      qFatal("the dialog %s \"%s\" is open, and no step handles it%s", nameOf(dialog).constData(),
             qPrintable(dialog->windowTitle()), next.constData());
    });
    QCoreApplication::instance()->installEventFilter(this);
  }

  bool eventFilter(QObject* /*object*/, QEvent* event) override {
    const auto type = event->type();
    if (type == QEvent::Show || type == QEvent::Hide || type == QEvent::EnabledChange) lookSoon();
    return false;
  }

  /// The dialog of the first step that was not done; empty where all were.
  QByteArray run(const QList<TdialogSteps::Tstep>& steps, const std::function<void()>& trigger) {
    const auto outer = steps_.size();
    steps_ = steps + steps_;
    trigger();
    if (steps_.size() <= outer) return {};
    QByteArray missed = steps_.first().dialog;
    steps_ = steps_.last(outer);
    return missed;
  }

 private:
  void lookSoon() {
    if (std::exchange(isToLook_, true)) return;
    QMetaObject::invokeMethod(
        this, [this] { look(); }, Qt::QueuedConnection);
  }

  void look() {
    isToLook_ = false;
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog == nullptr) return patience_.stop();
    patience_.start();
    if (QTest::currentTestFailed()) {
      dialog->close();  // the failed act did not get that far
      return;
    }
    if (steps_.isEmpty() || steps_.first().dialog != nameOf(dialog)) return;
    const QByteArray button = steps_.first().button;
    if (!button.isEmpty() && !control(dialog, button.constData())->isEnabled()) return;
    steps_.takeFirst().act(dialog);
    lookSoon();
  }

  QList<TdialogSteps::Tstep> steps_;
  QTimer patience_;
  bool isToLook_ = false;
};

Tdriver* driver = nullptr;

}  // namespace

void failWithoutControl(const QWidget* window, const char* name) {
  QByteArrayList names;
  for (const QWidget* child : window->findChildren<QWidget*>()) {
    if (!child->objectName().isEmpty())
      names << child->metaObject()->className() + (' ' + child->objectName().toLatin1());
  }
  qFatal("%s has no such control %s, only %s", nameOf(window).constData(), name, names.join(", ").constData());
}

QString tabOrder(const QWidget* window) {
  QStringList names;
  const QWidget* first = window->focusWidget();
  do {
    names << window->focusWidget()->objectName();
    QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
  } while (window->focusWidget() != first && names.size() < 100);
  return names.join(u' ');
}

void pasteByMenu(QLineEdit* edit) {
  const std::unique_ptr<QMenu> menu(edit->createStandardContextMenu());
  for (QAction* action : menu->actions()) {
    if (action->text().startsWith(QStringLiteral("&Paste"))) action->trigger();
  }
}

void TdialogSteps::during(const std::function<void()>& trigger) const {
  const QByteArray missed = driver->run(steps_, trigger);
  if (!missed.isEmpty()) QFAIL("no step was done to the dialog " + missed);
}

void watchDialogs() {
  driver = new Tdriver(QCoreApplication::instance());
}
