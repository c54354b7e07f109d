#include "upload/driverThread.h"

#include <QDeadlineTimer>
#include <chrono>

#include "support/keepModule.h"
#include "support/log.h"

namespace {

constexpr std::chrono::seconds longestEnd(5);

}  // namespace

void TdriverThread::run() {
  const TtransferResult result = exchange();
  over_ = true;
  emit exchangeEnded();
  if (result.message) boxes_.show(boxOwner_, *result.message, QString::fromStdString(result.message->advice));
  completed_.store(result.completed, std::memory_order_release);
}

void TdriverThread::end(std::unique_ptr<TdriverThread> thread) {
  thread->cancel();
  thread->boxes_.release();
  if (thread->wait(QDeadlineTimer(longestEnd))) {
    static_cast<void>(thread->isCompleted());  // synchronizes with everything that the thread wrote
    return;
  }
  logFailure("a driver does not return: the thread of the upload is left to the end of the process");
  keepModule();
  // Should the driver return after all, the thread is deleted like any other.
  connect(thread.get(), &QThread::finished, thread.get(), &QObject::deleteLater);
  if (thread->isFinished()) thread->deleteLater();
  static_cast<void>(thread.release());
}
