#pragma once

#include <QObject>
#include <QString>
#include <memory>

class Tlink;

/// A serial port under a path of the file system: a symbolic link to a pseudo-terminal. As soon as the host has opened
/// it, a fresh terminal replaces it. So bytes of one connection can never be taken for those of the next, however fast
/// the host closes and reopens the port. The destructor removes the link.
class TserialPort : public QObject {
  Q_OBJECT
 public:
  /// Creates terminal and link, replacing a stale link. Returns false, and `error` says why, if that fails.
  virtual bool open(QString& error) = 0;

 signals:
  /// A connection begins: the host has opened the port and sent something. The receiver takes ownership of the link.
  void begun(Tlink* link);
};

/// A port that is not open yet; null if the system has no pseudo-terminals.
std::unique_ptr<TserialPort> makeSerialPort(const QString& path);
