#pragma once

#include <QObject>
#include <QTcpServer>
#include <memory>

#include "simulator/options.h"
#include "simulator/session.h"

class Tlink;
class TserialPort;

/// The whole instrument: listens on the links of its options, and serves each connection with a session of its own.
class Tserver : public QObject {
  Q_OBJECT
 public:
  Tserver(const Toptions& options, Treport report);
  ~Tserver() override;

  /// Opens all links. Returns false, and `error` says why, if one cannot be opened.
  bool listen(QString& error);

 signals:
  /// With --once: the program should end with this status.
  void finished(int status);

 private:
  bool listen(QTcpServer& server, quint16 port, const char* name, QString& error);
  bool openSerial(QString& error);
  void catchUp();
  void acceptTcp();
  void acceptUsb();
  void serve(Tlink* link);
  void conclude(const Tsession& session);

  Toptions options_;
  Treport report_;
  TfaultScript script_;
  QTcpServer tcp_;
  QTcpServer usb_;
  std::unique_ptr<TserialPort> serial_;
};
