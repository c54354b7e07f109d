#include "comm/genComm.h"

#include <QCoreApplication>
#include <QTcpSocket>
#include <QThread>
#include <algorithm>
#include <optional>
#include <thread>
#include <utility>

#include "comm/commMessages.h"
#include "comm/commStruct.h"
#include "support/failure.h"
#include "support/log.h"

// The parts common to all transports. Each transport has a source file of its own.

namespace {

using Tclock = std::chrono::steady_clock;

constexpr std::size_t mostOfRest = 64;

/// Pauses within a wait that has lasted for `passed`. The first millisecond passes without a sleep, so that an
/// immediate answer is seen at once.
void nap(Tclock::duration passed) {
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
    logCaught("the end of a channel");
  }
}

int TDataCommClass::open() {
  failure_.clear();
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
  events_.reset();  // disconnects the socket's events
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
  if (!failure) return;
  logFailure(failure->reason());
  showSerialError(*failure);
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

void TDataCommClass::discardInput() {
  if (openMode() == TcommMode::serial) resources_->serial()->discardInput();
  if (openMode() == TcommMode::usb) resources_->usbCalls().purge(*resources_->usb(), Td2xxCalls::received);
}

TcommWait TDataCommClass::waitForBytes(std::size_t count, std::chrono::milliseconds slot) {
  const auto begin = Tclock::now();
  bool isReadable = false;
  while (true) {
    const std::uint32_t waiting = bytesWaiting();
    if (waiting >= count) return TcommWait::arrived;
    if (isReadable && waiting == 0) noticeEnd();
    if (isLost()) {
      if (connected_) lost("wait for");
      return TcommWait::lost;
    }
    const auto passed = Tclock::now() - begin;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(slot - passed);
    if (left.count() <= 0) return TcommWait::slotOver;
    if (!canWaitOnLink(waiting)) {
      nap(passed);
    } else if (mode_ == TcommMode::ethernet) {
      isReadable = connected_->waitForReadyRead(static_cast<int>(left.count()));
    } else {
      resources_->serial()->awaitInput(left);
    }
  }
}

std::string TDataCommClass::takeRest() noexcept {
  const bool silent = std::exchange(silent_, true);
  std::string bytes;
  try {
    bytes.resize(std::min<std::size_t>(bytesWaiting(), mostOfRest));
    if (read(bytes.data(), bytes.size()) != commSuccess) bytes.clear();
  } catch (...) {
    bytes.clear();  // the link is lost
  }
  silent_ = silent;
  return bytes;
}

std::string TDataCommClass::failureText(const char* operation, const std::string& reason) const {
  return Tfailure{operation, target(), reason}.text();
}

int TDataCommClass::failed(const char* operation, const std::string& reason) {
  failure_ = failureText(operation, reason);
  return commFailed;
}

/// The result of a read or write that transferred `done` of `count` bytes.
int TDataCommClass::transferred(const char* operation, std::size_t done, std::size_t count) {
  if (done == count) return commSuccess;
  return failed(operation, std::to_string(done) + " of " + std::to_string(count) + " bytes");
}

/// A wait on a serial port ends at once if bytes are waiting, and the USB driver offers no wait.
bool TDataCommClass::canWaitOnLink(std::uint32_t waiting) const {
  return mode_ == TcommMode::ethernet || (mode_ == TcommMode::serial && waiting == 0);
}

bool TDataCommClass::isLost() const {
  return serialLost_ || (connected_ && connected_->state() != QAbstractSocket::ConnectedState);
}

bool TDataCommClass::isOnUserInterfaceThread() {
  const QCoreApplication* application = QCoreApplication::instance();
  return application && QThread::currentThread() == application->thread();
}

void TDataCommClass::pumpMessages() {
  if (isOnUserInterfaceThread()) QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void TDataCommClass::show(const TmessageText& message) {
  if (!silent_ && showBox_) showBox_(message);
}
