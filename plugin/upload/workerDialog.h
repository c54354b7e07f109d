#pragma once

#include <QDialog>
#include <memory>

#include "upload/driverThread.h"

/// A dialog with Cancel that owns a worker thread of an upload. Lives on the user-interface thread.
///
/// Cancel closes the dialog at once. The worker ends soon after and may show a message box: `awaitWorker` keeps the
/// event loop running until then. Destroying the dialog at any time cancels the exchange and ends the worker without a
/// message (`TdriverThread::end`).
class TworkerDialog : public QDialog {
  Q_OBJECT

 public:
  ~TworkerDialog() override;

  /// Keeps what the worker uses for as long as it runs. Called before the start.
  void hold(const QSharedPointer<TheldByWorker>& held) { worker_->hold(held); }

  /// Waits until the worker has ended, but not for more than a second until its exchange is over. Returns early if the
  /// application quits or this dialog is destroyed. False if the worker is still running.
  bool awaitWorker();

  /// Whether the worker has done its work. Valid after it has ended.
  bool isCompleted() const { return worker_->isCompleted(); }
  const TdriverThread& worker() const { return *worker_; }

  /// Cancel, and Esc.
  void reject() override;

 protected:
  explicit TworkerDialog(QWidget* parent) : QDialog(parent) {}

  /// Called once, in the constructor.
  void setWorker(std::unique_ptr<TdriverThread> worker) { worker_ = std::move(worker); }
  void startWorker();

 private:
  std::unique_ptr<TdriverThread> worker_;
};
