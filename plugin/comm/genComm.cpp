#include "comm/genComm.h"

#include <QCoreApplication>
#include <QTcpSocket>
#include <QThread>
#include <optional>
#include <thread>

#include "comm/commStruct.h"
#include "comm/transportMessages.h"

// What the three transports have in common; each has a source file of its own.

namespace {

/// Lets a little time pass in a wait that has lasted so long: an answer that comes at once is not to wait for the end
/// of a sleep.
void nap(std::chrono::steady_clock::duration passed) {
  if (passed < std::chrono::milliseconds(1)) {
    std::this_thread::yield();
  } else {
    std::this_thread::sleep_for(std::chrono::microseconds(500));
  }
}

}  // namespace

TDataCommClass::TDataCommClass(TcommStruct* resources, TcommMode mode, unsigned timeOut, std::size_t blockSize,
                               const TcommParameters* parameters, bool silent, TshowBox showBox)
    : silent_(silent),
      mode_(mode),
      timeOut_(timeOut),
      blockSize_(blockSize),
      resources_(resources),
      parameters_(parameters),
      showBox_(std::move(showBox)) {
  if (!resources_ || mode_ == TcommMode::none || !parameters_) throw TuninitializedCommModeException();
}

TDataCommClass::~TDataCommClass() {
  try {
    if (open_) closeTransport();
  } catch (...) {
    open_ = false;  // nobody is left to be told
  }
}

int TDataCommClass::open() {
  try {
    switch (mode_) {
      case TcommMode::serial:
        openSerial();
        break;
      case TcommMode::usb:
        openUsb();
        break;
      case TcommMode::ethernet:
        openEthernet();
        break;
      default:
        throw TuninitializedCommModeException();
    }
  } catch (...) {
    closeTransport();
    throw;
  }
  open_ = true;
  return commSuccess;
}

int TDataCommClass::openAgain() {
  return open();
}

void TDataCommClass::close() {
  if (mode_ == TcommMode::none) throw TuninitializedCommModeException();
  closeTransport();
  mode_ = TcommMode::none;
}

/// Leaves everything closed and the resources free; only then reports a port that did not close.
void TDataCommClass::closeTransport() {
  open_ = false;
  events_.reset();  // no event of the socket counts from here on
  closeUsbDevice();
  std::optional<ECommError> failure;
  try {
    if (resources_->serial()) resources_->serial()->close();
  } catch (const ECommError& error) {
    failure = error;
  }
  if (resources_->ethernet()) resources_->ethernet()->close();
  connected_ = nullptr;
  state_ = TcommState::idle;
  resources_->close();
  if (failure) showSerialError(*failure);
}

std::uint32_t TDataCommClass::bytesWaiting() {
  switch (openMode()) {
    case TcommMode::serial:
      return serialBytesWaiting();
    case TcommMode::usb:
      return usbBytesWaiting();
    case TcommMode::ethernet:
      return ethernetBytesWaiting();
    default:
      throw TuninitializedCommModeException();
  }
}

int TDataCommClass::read(void* buffer, std::size_t count) {
  if (!buffer || count == 0) return commNoBuffer;
  switch (openMode()) {
    case TcommMode::serial:
      return serialRead(buffer, count);
    case TcommMode::usb:
      return usbRead(buffer, static_cast<std::uint32_t>(count));
    case TcommMode::ethernet:
      return ethernetRead(buffer, count);
    default:
      throw TuninitializedCommModeException();
  }
}

int TDataCommClass::write(const void* buffer, std::size_t count) {
  if (!buffer || count == 0) return commNoBuffer;
  switch (openMode()) {
    case TcommMode::serial:
      return serialWrite(buffer, count);
    case TcommMode::usb:
      return usbWrite(buffer, static_cast<std::uint32_t>(count));
    case TcommMode::ethernet:
      return ethernetWrite(buffer, count);
    default:
      throw TuninitializedCommModeException();
  }
}

void TDataCommClass::progress(int) {}

TcommWait TDataCommClass::waitForBytes(std::size_t count, std::chrono::milliseconds slot) {
  using Tclock = std::chrono::steady_clock;
  const auto begin = Tclock::now();
  while (true) {
    const std::uint32_t waiting = bytesWaiting();
    if (waiting >= count) return TcommWait::arrived;
    if (isLost()) return TcommWait::lost;
    const auto passed = Tclock::now() - begin;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(slot - passed);
    if (left.count() <= 0) return TcommWait::slotOver;
    if (!canWaitOnLink(waiting)) {
      nap(passed);
    } else if (mode_ == TcommMode::ethernet) {
      connected_->waitForReadyRead(static_cast<int>(left.count()));
    } else {
      resources_->serial()->awaitInput(left);
    }
  }
}

/// A serial port with some bytes does not tell of more, and the USB driver tells of none.
bool TDataCommClass::canWaitOnLink(std::uint32_t waiting) const {
  return mode_ == TcommMode::ethernet || (mode_ == TcommMode::serial && waiting == 0);
}

bool TDataCommClass::isLost() const {
  return serialLost_ || (connected_ && connected_->state() != QAbstractSocket::ConnectedState);
}

void TDataCommClass::pumpMessages() {
  const QCoreApplication* application = QCoreApplication::instance();
  if (!application || QThread::currentThread() != application->thread()) return;
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void TDataCommClass::show(const TmessageText& message) {
  if (!silent_ && showBox_) showBox_(message);
}
