#pragma once

#include <QByteArray>
#include <QObject>

#include "simulator/faults.h"

/// The analyzer's end of one connection of any kind. Bytes go out at once and in order.
class Tlink : public QObject {
  Q_OBJECT
 public:
  explicit Tlink(TlinkKind kind) : kind_(kind) {}

  TlinkKind kind() const { return kind_; }

  virtual void send(const QByteArray& bytes) = 0;
  /// Accepts no more bytes, so that the host's writes fill the buffers in between.
  virtual void stopReading() = 0;
  /// Ends the connection in order, after everything sent has gone out.
  virtual void close() = 0;
  /// Aborts the connection if the link can do that; otherwise like `close`.
  virtual void reset() { close(); }
  /// Takes the link away once the host has read what was sent, if the link can do that; otherwise like `close`.
  virtual void unplug() { close(); }

 signals:
  void received(const QByteArray& bytes);
  /// Either side has ended the connection. Emitted once, as the last signal.
  void closed();
  /// The stand-in driver has played the fault inside a write.
  void driverPlayed();

 private:
  TlinkKind kind_;
};
