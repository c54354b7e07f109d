#include "support/messageRelay.h"

#include <condition_variable>
#include <mutex>

#include "support/messageBox.h"

struct TmessageRelay::Tstate {
  std::mutex mutex;
  std::condition_variable changed;
  bool answered = false;
  bool released = false;

  void set(bool Tstate::*flag) {
    const std::lock_guard lock(mutex);
    this->*flag = true;
    changed.notify_all();
  }
};

TmessageRelay::TmessageRelay() : state_(std::make_shared<Tstate>()) {}

TmessageRelay::~TmessageRelay() {
  release();
}

void TmessageRelay::show(const QPointer<QWidget>& owner, const TmessageText& message, const QString& informativeText) {
  std::unique_lock lock(state_->mutex);
  if (state_->released) return;
  state_->answered = false;
  // The function shares the state, because its box may still be open when this object is destroyed.
  QMetaObject::invokeMethod(
      this,
      [state = state_, owner, message, informativeText] {
        showMessageInFront(owner, message, informativeText);
        state->set(&Tstate::answered);
      },
      Qt::QueuedConnection);
  state_->changed.wait(lock, [this] { return state_->answered || state_->released; });
}

void TmessageRelay::release() {
  state_->set(&Tstate::released);
}
