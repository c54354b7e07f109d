#include <QEventLoop>
#include <QNetworkProxy>
#include <QTcpSocket>
#include <QTimer>
#include <stdexcept>
#include <string>

#include "comm/commMessages.h"
#include "comm/commStruct.h"
#include "comm/genComm.h"

// The Ethernet transport: a TCP client socket.

namespace {

constexpr int slotLength = 10;  // ms

unsigned passesOf(unsigned timeOut) {
  return timeOut / slotLength + 1;
}

TsocketError kindOf(QAbstractSocket::SocketError error, TcommState state) {
  if (state == TcommState::connecting) return TsocketError::connect;
  return error == QAbstractSocket::RemoteHostClosedError ? TsocketError::disconnect : TsocketError::general;
}

/// Runs the event loop until the socket's state changes, for one slot at most. The timer ends with the wait: a static
/// single shot would belong to the application, which may outlive the module and its code.
void runSlot(const QTcpSocket& socket) {
  QEventLoop loop;
  QTimer slot;
  slot.setTimerType(Qt::PreciseTimer);
  QObject::connect(&socket, &QTcpSocket::stateChanged, &loop, &QEventLoop::quit);
  QObject::connect(&slot, &QTimer::timeout, &loop, &QEventLoop::quit);
  slot.start(slotLength);
  loop.exec(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace

void TDataCommClass::openEthernet() {
  const auto& address = parameters<TethernetParameters>();
  if (!resources_->open(TcommStruct::ethernetKind)) {
    show(noEthernetSlot);
    throw std::runtime_error("Ethernet Connection Error");
  }
  connectTimeOut_ = address.timeOut > 0 ? address.timeOut : timeOut_;
  startConnecting(address);
  awaitConnection();
}

void TDataCommClass::startConnecting(const TethernetParameters& parameters) {
  QTcpSocket* socket = resources_->ethernet();
  events_ = std::make_unique<QObject>();
  refused_ = false;
  QObject::connect(socket, &QTcpSocket::connected, events_.get(), [this, socket] { socketConnect(socket); });
  QObject::connect(socket, &QTcpSocket::errorOccurred, events_.get(), [this](QAbstractSocket::SocketError error) {
    // A wait that ended without result is no error of the link.
    if (error != QAbstractSocket::SocketTimeoutError) socketError(kindOf(error, state_));
  });
  socket->setProxy(QNetworkProxy::NoProxy);
  pumpMessages();
  state_ = TcommState::connecting;
  // On a worker thread a buffer would cost more than the exchange itself: the socket would wake an event loop that
  // nobody runs at each read and write. Where one runs, a socket without a buffer keeps it busy with what is not read
  // yet.
  const QIODevice::OpenMode buffering = isOnUserInterfaceThread() ? QIODevice::NotOpen : QIODevice::Unbuffered;
  socket->connectToHost(QString::fromStdString(parameters.address()), static_cast<quint16>(parameters.port),
                        QIODevice::ReadWrite | buffering);
}

/// Waits in the event loop: the socket's own wait would give up connecting after the first slot.
void TDataCommClass::awaitConnection() {
  QTcpSocket* socket = resources_->ethernet();
  for (unsigned pass = 0; pass < passesOf(connectTimeOut_); ++pass) {
    if (state_ == TcommState::connected) return;
    requireNotRefused();
    if (cancelRequested()) throw ToperationCancelledException();
    runSlot(*socket);
  }
  if (state_ == TcommState::connected) return;
  requireNotRefused();
  throw TcommTimeoutException(failureText("connect to", "no answer in " + std::to_string(connectTimeOut_) + " ms"));
}

void TDataCommClass::requireNotRefused() const {
  if (!refused_) return;
  throw TinitializationException(failureText("connect to", resources_->ethernet()->errorString().toStdString()));
}

/// The result of a read, write or wait on a lost connection.
int TDataCommClass::lost(const char* operation) {
  return failed(operation, connected_->errorString().toStdString());
}

/// Without a buffer of its own the socket learns only by reading that the other side has ended the connection.
void TDataCommClass::noticeEnd() {
  char next = 0;
  connected_->peek(&next, 1);
}

void TDataCommClass::socketConnect(QTcpSocket* socket) {
  connected_ = socket;
  socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
  state_ = TcommState::connected;
}

void TDataCommClass::socketError(TsocketError error) {
  if (error == TsocketError::connect) refused_ = true;
  show(socketErrorMessage(error));
}

/// Only the result of the last call counts. Callers read only bytes that are waiting, so one call returns them all.
int TDataCommClass::ethernetRead(void* buffer, std::size_t count) {
  std::size_t received = 0;
  for (unsigned pass = 0; pass < passesOf(timeOut_); ++pass) {
    const qint64 result =
        connected_->read(static_cast<char*>(buffer) + received, static_cast<qint64>(count - received));
    received = result > 0 ? static_cast<std::size_t>(result) : 0;
    if (received >= count) return commSuccess;
    if (isLost()) return lost("read from");
    pumpMessages();
    connected_->waitForReadyRead(slotLength);
  }
  throw TcommTimeoutException(failureText("read from", "incomplete after " + std::to_string(timeOut_) + " ms"));
}

int TDataCommClass::ethernetWrite(const void* buffer, std::size_t count) {
  const auto size = static_cast<qint64>(count);
  if (isLost() || connected_->write(static_cast<const char*>(buffer), size) != size) return lost("write to");
  connected_->flush();
  for (unsigned pass = 0; connected_->bytesToWrite() > 0 && pass < passesOf(timeOut_); ++pass) {
    if (isLost()) return lost("write to");
    if (cancelRequested()) throw ToperationCancelledException();
    pumpMessages();
    connected_->waitForBytesWritten(slotLength);
  }
  if (isLost()) return lost("write to");
  return transferred("write to", static_cast<std::size_t>(size - connected_->bytesToWrite()), count);
}

std::uint32_t TDataCommClass::ethernetBytesWaiting() {
  return static_cast<std::uint32_t>(connected_->bytesAvailable());
}
