#include "simulator/serialLink.h"

#include <QTimer>

namespace {

constexpr int unplugAttempts = 200;  // one per millisecond
constexpr int closeInterval = 10;    // milliseconds

}  // namespace

TserialLink::TserialLink(std::unique_ptr<TpseudoTerminal> terminal)
    : Tlink(TlinkKind::serial),
      terminal_(std::move(terminal)),
      notifier_(terminal_->descriptor(), QSocketNotifier::Read) {
  connect(&notifier_, &QSocketNotifier::activated, this, &TserialLink::read);
}

void TserialLink::send(const QByteArray& bytes) {
  terminal_->write(bytes);
}

void TserialLink::stopReading() {
  notifier_.setEnabled(false);
  closeWithHost();
}

void TserialLink::close() {
  notifier_.setEnabled(false);
  if (!closed_) emit closed();
  closed_ = true;
}

void TserialLink::unplug() {
  unplugWithin(unplugAttempts);
}

void TserialLink::read() {
  const auto bytes = terminal_->read();
  if (bytes) {
    pass(*bytes);
  } else {
    close();
  }
}

void TserialLink::pass(const QByteArray& bytes) {
  if (bytes.isEmpty()) return;
  if (!begun_) emit begun();
  begun_ = true;
  emit received(bytes);
}

/// Polls for the host's close, which nothing reports while reading is off.
void TserialLink::closeWithHost() {
  if (!terminal_->isClosed()) {
    QTimer::singleShot(closeInterval, this, &TserialLink::closeWithHost);
    return;
  }
  pass(terminal_->read().value_or(QByteArray()));
  close();
}

void TserialLink::unplugWithin(int attempts) {
  if (attempts == 0 || terminal_->isDrained()) {
    close();
  } else {
    QTimer::singleShot(1, Qt::PreciseTimer, this, [this, attempts] { unplugWithin(attempts - 1); });
  }
}
