#include "upload/workerDialog.h"

#include <QEventLoop>
#include <QTimer>
#include <chrono>

namespace {

constexpr std::chrono::seconds endingWait(1);

}  // namespace

TworkerDialog::~TworkerDialog() {
  if (worker_) TdriverThread::end(std::move(worker_));
}

bool TworkerDialog::awaitWorker() {
  if (!worker_->isRunning()) return true;
  QEventLoop loop;
  QTimer limit;
  connect(worker_.get(), &TdriverThread::exchangeEnded, &limit, &QTimer::stop);
  connect(worker_.get(), &QThread::finished, &loop, &QEventLoop::quit);
  connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
  connect(&limit, &QTimer::timeout, &loop, &QEventLoop::quit);
  if (!worker_->isExchangeOver()) limit.start(endingWait);
  const QPointer<TworkerDialog> self(this);
  if (worker_->isRunning()) loop.exec(QEventLoop::ExcludeUserInputEvents);
  return self.isNull() || !worker_->isRunning();
}

void TworkerDialog::reject() {
  worker_->cancel();
  done(Rejected);
}

void TworkerDialog::startWorker() {
  if (!worker_->isRunning() && !worker_->isFinished()) worker_->start();
}
