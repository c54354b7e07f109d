#pragma once

#include <QByteArray>
#include <QObject>

#include "simulator/faults.h"

/// The analyzer's end of one connection, whatever it runs over. Bytes go out at once and in order.
class Tlink : public QObject {
  Q_OBJECT
 public:
  explicit Tlink(TlinkKind kind) : kind_(kind) {}

  TlinkKind kind() const { return kind_; }

  virtual void send(const QByteArray& bytes) = 0;
  /// Takes no more bytes, so that the host's writes fill up what lies between.
  virtual void stopReading() = 0;
  /// Ends the connection in order, what was sent included.
  virtual void close() = 0;
  /// Ends it without order, where the link has such an end; else as `close`.
  virtual void reset() { close(); }
  /// Takes the link away from the host, once the host has read what was sent; else as `close`.
  virtual void unplug() { close(); }

 signals:
  void received(const QByteArray& bytes);
  /// The connection has ended, by either side. Once, and last.
  void closed();
  /// The stand-in driver has played the fault inside a write.
  void driverPlayed();

 private:
  TlinkKind kind_;
};
