#pragma once

#include <QObject>
#include <QTcpServer>
#include <memory>

#include "simulator/options.h"
#include "simulator/session.h"

class Tlink;
class TserialPort;

/// The whole instrument: listens on the links that it was told, and serves each connection by a session of its own.
class Tserver : public QObject {
  Q_OBJECT
 public:
  Tserver(const Toptions& options, Treport report);
  ~Tserver() override;

  /// Opens all links. False, and `error` says why, where one cannot be had.
  bool listen(QString& error);

 signals:
  /// The program is to end, where it serves but once.
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
