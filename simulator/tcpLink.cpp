#include "simulator/tcpLink.h"

#include <QTcpSocket>

#include "simulator/hardClose.h"

TtcpLink::TtcpLink(std::unique_ptr<QTcpSocket> socket, TlinkKind kind) : Tlink(kind), socket_(std::move(socket)) {
  socket_->setParent(nullptr);
  socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
  connect(socket_.get(), &QTcpSocket::readyRead, this, &TtcpLink::read);
  connect(socket_.get(), &QTcpSocket::disconnected, this, &TtcpLink::closed);
}

TtcpLink::~TtcpLink() {
  socket_->disconnect(this);
}

void TtcpLink::send(const QByteArray& bytes) {
  socket_->write(bytes);
  socket_->flush();
}

void TtcpLink::stopReading() {
  // With a buffer of one byte the socket still notices the end of a connection on which nothing more arrives.
  reading_ = false;
  socket_->setReadBufferSize(1);
}

void TtcpLink::close() {
  socket_->disconnectFromHost();
}

void TtcpLink::reset() {
  closeHard(socket_->socketDescriptor());
  socket_->abort();
}

void TtcpLink::catchUp() {
  socket_->waitForReadyRead(0);
}

void TtcpLink::read() {
  if (reading_) decode(socket_->readAll());
}
