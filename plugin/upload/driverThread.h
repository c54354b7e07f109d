#pragma once

#include <QPointer>
#include <QSharedPointer>
#include <QThread>
#include <QWidget>
#include <atomic>
#include <memory>

#include "support/messageRelay.h"
#include "upload/transfer.h"

/// What a worker uses and can keep. Qt's pointer shares it: the standard one would leave names in the module's table of
/// symbols.
struct TheldByWorker {
  TheldByWorker() = default;
  TheldByWorker(const TheldByWorker&) = delete;
  TheldByWorker& operator=(const TheldByWorker&) = delete;
  virtual ~TheldByWorker() = default;
};

/// A worker thread that exchanges data with the analyzer and then shows the message of the failure, if any, on the
/// user-interface thread. It calls drivers, and one of them may never return.
///
/// Lives on the user-interface thread. The worker itself touches no window.
class TdriverThread : public QThread, protected TtransferView {
  Q_OBJECT

 public:
  /// The message boxes are shown over `boxOwner`, which may be null or be destroyed before.
  explicit TdriverThread(QWidget* boxOwner) : boxOwner_(boxOwner) {}

  /// Cancels the exchange; may be called from any thread.
  void cancel() { cancelled_ = true; }
  bool isCancelled() const override { return cancelled_; }

  /// Keeps something that the worker uses for as long as the worker runs. Called before the start.
  void hold(const QSharedPointer<TheldByWorker>& held) { held_ = held; }

  /// Whether all is over but the message box.
  bool isExchangeOver() const { return over_; }

  /// Whether the analyzer has acknowledged everything. Valid after the thread has ended.
  bool isCompleted() const { return completed_.load(std::memory_order_acquire); }

  /// Ends a thread: cancels its exchange, closes no box but waits for none, and waits for 5 seconds. Where a driver has
  /// not returned by then, the thread is left to the end of the process with what it holds, and this module stays
  /// loaded. The log says so.
  static void end(std::unique_ptr<TdriverThread> thread);

 signals:
  /// The exchange is over; a message box may follow.
  void exchangeEnded();

 protected:
  virtual TtransferResult exchange() = 0;

  void showOperation(const char*) override {}
  void showProgress(int) override {}

 private:
  void run() final;

  const QPointer<QWidget> boxOwner_;
  TmessageRelay boxes_;
  QSharedPointer<TheldByWorker> held_;
  std::atomic<bool> cancelled_ = false;
  std::atomic<bool> over_ = false;
  std::atomic<bool> completed_ = false;  ///< written last: whoever reads it sees everything else
};
