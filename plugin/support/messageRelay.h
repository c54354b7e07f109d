#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <memory>

#include "support/messages.h"

/// Shows a worker thread's message boxes on the user-interface thread, while the worker waits for the user's answer.
///
/// Lives on the user-interface thread and must outlive the worker. Its owner need not run an event loop to end the
/// worker: after `release` no worker waits any more, whether its box was still to be shown or is open.
class TmessageRelay : public QObject {
 public:
  TmessageRelay();
  ~TmessageRelay() override;

  /// Shows a box over `owner` (it may be null or go meanwhile); called on the worker thread. Returns when the user has
  /// answered, and at once after `release`.
  void show(const QPointer<QWidget>& owner, const TmessageText& message);

  /// Lets the worker go on, now and from now on; boxes that are asked for later are not shown.
  void release();

 private:
  struct Tstate;
  std::shared_ptr<Tstate> state_;
};
