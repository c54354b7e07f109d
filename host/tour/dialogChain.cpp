#include "host/tour/dialogChain.h"

#include <QApplication>

void TdialogChain::add(const char* dialog, const Tact& act, const char* button) {
  acts_.append({QString::fromLatin1(dialog), act, QString::fromLatin1(button)});
}

void TdialogChain::run(const std::function<void()>& open) {
  follow();
  open();
  if (failure_) std::rethrow_exception(failure_);
  expect(acts_.isEmpty(), notReady());
}

/// Each act has a timer of its own, because the previous acts may not have returned yet.
void TdialogChain::follow() {
  auto* timer = new QTimer(this);
  sinceAct_.start();
  connect(timer, &QTimer::timeout, this, [this, timer] {
    QWidget* window = QApplication::activeModalWidget();
    if (window != nullptr && failure_) window->close();
    if (failure_ || acts_.isEmpty()) return;
    if (sinceAct_.hasExpired(windowPatience)) failure_ = std::make_exception_ptr(TstepFailed(notReady()));
    if (failure_ || !isReady(window)) return;
    timer->stop();
    const Tact act = acts_.takeFirst().act;
    follow();
    doAct(act, window);
  });
  timer->start(10);
}

bool TdialogChain::isReady(QWidget* window) const {
  const Tstep& next = acts_.first();
  if (window == nullptr || window == last_) return false;
  if (window->objectName() != next.dialog && !window->inherits(qPrintable(next.dialog))) return false;
  const auto* button = window->findChild<QAbstractButton*>(next.button);
  if (!next.button.isEmpty() && (button == nullptr || !button->isEnabled())) return false;
  return isBroughtToFront(window);
}

void TdialogChain::doAct(const Tact& act, QWidget* window) {
  last_ = window;
  try {
    act(TuserHands(window));
  } catch (const TstepFailed&) {
    failure_ = std::current_exception();
  }
}

QString TdialogChain::notReady() const {
  return QStringLiteral("%1 is not ready").arg(acts_.value(0).dialog);
}
