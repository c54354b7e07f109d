#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <memory>

#include "support/messageText.h"

/// Shows a worker thread's message boxes on the user-interface thread while the worker waits for the user's answer.
///
/// Lives on the user-interface thread and must outlive the worker. Its owner can end the worker without running an
/// event loop: after `release` the worker no longer waits, whether its box is pending or open.
class TmessageRelay : public QObject {
 public:
  TmessageRelay();
  ~TmessageRelay() override;

  /// Shows a box in front, over `owner`, which may be null or be destroyed meanwhile. Called on the worker thread.
  /// Returns when the user has answered, or at once after `release`.
  void show(const QPointer<QWidget>& owner, const TmessageText& message, const QString& informativeText = {});

  /// Lets the worker go on. Later boxes are not shown, and nothing waits for them.
  void release();

 private:
  struct Tstate;
  std::shared_ptr<Tstate> state_;
};
