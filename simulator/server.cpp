#include "simulator/server.h"

#include <QTcpSocket>
#include <QTimer>

#include "simulator/serialPort.h"
#include "simulator/tcpLink.h"
#include "simulator/usbLink.h"

Tserver::Tserver(const Toptions& options, Treport report)
    : options_(options), report_(std::move(report)), script_(options.fault) {
  connect(&tcp_, &QTcpServer::newConnection, this, &Tserver::acceptTcp);
  connect(&usb_, &QTcpServer::newConnection, this, &Tserver::acceptUsb);
}

Tserver::~Tserver() = default;

bool Tserver::listen(QString& error) {
  return (!options_.tcp || listen(tcp_, *options_.tcp, "tcp", error)) &&
         (options_.serial.isEmpty() || openSerial(error)) &&
         (!options_.usb || listen(usb_, *options_.usb, "usb", error));
}

bool Tserver::listen(QTcpServer& server, quint16 port, const char* name, QString& error) {
  if (!server.listen(QHostAddress::LocalHost, port)) {
    error = QStringLiteral("port %1: %2").arg(port).arg(server.errorString());
    return false;
  }
  report_(QByteArray("listening ") + name + ' ' + QByteArray::number(server.serverPort()));
  return true;
}

bool Tserver::openSerial(QString& error) {
  serial_ = makeSerialPort(options_.serial);
  if (!serial_) {
    error = QStringLiteral("--serial: this system has no pseudo-terminals");
    return false;
  }
  connect(serial_.get(), &TserialPort::begun, this, &Tserver::serve);
  if (!serial_->open(error)) return false;
  report_("listening serial " + options_.serial.toLocal8Bit());
  return true;
}

/// When a host closes and reconnects, the old connection's end is handled first, as the fault script requires.
void Tserver::catchUp() {
  for (TtcpLink* link : findChildren<TtcpLink*>()) link->catchUp();
}

void Tserver::acceptTcp() {
  catchUp();
  while (tcp_.hasPendingConnections()) {
    serve(std::make_unique<TtcpLink>(std::unique_ptr<QTcpSocket>(tcp_.nextPendingConnection())).release());
  }
}

void Tserver::acceptUsb() {
  catchUp();
  while (usb_.hasPendingConnections()) {
    serve(std::make_unique<TusbLink>(std::unique_ptr<QTcpSocket>(usb_.nextPendingConnection()), script_).release());
  }
}

/// Takes ownership of the link, which its session then owns.
void Tserver::serve(Tlink* link) {
  const TanalyzerSettings settings{options_.blocks, options_.timeout, options_.save.toLocal8Bit(), options_.latency};
  auto owned = std::make_unique<Tsession>(*link, settings, options_.baud, script_, report_);
  link->setParent(owned.get());
  owned->setParent(this);
  Tsession& session = *owned.release();
  connect(&session, &Tsession::ended, this, [this, &session] {
    conclude(session);
    session.deleteLater();
  });
  connect(&session, &Tsession::decided, &session, [this, &session] {
    if (options_.once) QTimer::singleShot(options_.timeout, &session, &Tsession::close);
  });
}

void Tserver::conclude(const Tsession& session) {
  if (!options_.once || !(session.isWrong() || session.hasUpload())) return;
  emit finished(session.isWrong() ? 1 : 0);
}
