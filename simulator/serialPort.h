#pragma once

#include <QObject>
#include <QString>
#include <memory>

class Tlink;

/// A serial port under a path of the file system: a symbolic link to a pseudo-terminal, which is replaced by a fresh
/// one as soon as the host has opened it. Bytes of a connection can so never be taken for those of the next, however
/// fast the host closes and opens again. Destroying it removes the link.
class TserialPort : public QObject {
  Q_OBJECT
 public:
  /// Makes terminal and link, a stale link's place taken. False, and `error` says why, where that cannot be.
  virtual bool open(QString& error) = 0;

 signals:
  /// A connection begins: the host has opened the port and sent something. The receiver takes the link over.
  void begun(Tlink* link);
};

/// Not open yet. Null where the system has no pseudo-terminals.
std::unique_ptr<TserialPort> makeSerialPort(const QString& path);
