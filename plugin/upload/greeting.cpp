#include "upload/greeting.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QPointer>
#include <QTimer>
#include <chrono>

#include "ui_greeting.h"
#include "upload/uploadImage.h"

namespace {

constexpr std::chrono::milliseconds withoutWindow(500);

class TgreetingThread final : public TdriverThread {
 public:
  TgreetingThread(const TuploadTransport& transport, TcommStruct& resources, QWidget* boxOwner)
      : TdriverThread(boxOwner), transport_(transport), resources_(resources) {}

 private:
  TtransferResult exchange() override {
    const TcommOutcome failure = greet(transport_, resources_, *this);
    return {!failure, failure};
  }

  const TuploadTransport transport_;
  TcommStruct& resources_;
};

class TwaitCursor {
 public:
  TwaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  TwaitCursor(const TwaitCursor&) = delete;
  TwaitCursor& operator=(const TwaitCursor&) = delete;
  ~TwaitCursor() { QGuiApplication::restoreOverrideCursor(); }
};

}  // namespace

TfrmGreeting::TfrmGreeting(const TuploadCommStruct& upload, TcommStruct& resources, QWidget* parent)
    : TworkerDialog(parent), ui_(std::make_unique<Ui::TfrmGreeting>()) {
  setWindowFlags(Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
  ui_->setupUi(this);
  auto worker = std::make_unique<TgreetingThread>(transportOf(upload), resources, parent);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &TfrmGreeting::reject);
  connect(worker.get(), &TdriverThread::exchangeEnded, this, &TfrmGreeting::exchangeEnded);
  setWorker(std::move(worker));
}

TfrmGreeting::~TfrmGreeting() = default;

int TfrmGreeting::exec() {
  const QPointer<TfrmGreeting> self(this);
  awaitExchange();
  if (self.isNull() || ended_) return Accepted;
  return QDialog::exec();
}

/// Starts the exchange and waits until it is over, for half a second at most.
void TfrmGreeting::awaitExchange() {
  const TwaitCursor cursor;
  QEventLoop loop;
  connect(&worker(), &TdriverThread::exchangeEnded, &loop, &QEventLoop::quit);
  connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
  QTimer limit;
  connect(&limit, &QTimer::timeout, &loop, &QEventLoop::quit);
  limit.start(withoutWindow);
  startWorker();
  loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void TfrmGreeting::exchangeEnded() {
  ended_ = true;
  if (isVisible()) done(Accepted);
}
