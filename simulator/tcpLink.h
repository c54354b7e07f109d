#pragma once

#include <memory>

#include "simulator/link.h"

class QTcpSocket;

/// A TCP connection.
class TtcpLink : public Tlink {
  Q_OBJECT
 public:
  /// Takes ownership of a connected socket.
  explicit TtcpLink(std::unique_ptr<QTcpSocket> socket, TlinkKind kind = TlinkKind::tcp);
  ~TtcpLink() override;

  void send(const QByteArray& bytes) override;
  void stopReading() override;
  void close() override;
  void reset() override;
  /// Handles what has arrived, including the end of the connection, without waiting for the event loop.
  void catchUp();

 protected:
  /// Handles the bytes that arrived over the socket.
  virtual void decode(const QByteArray& bytes) { emit received(bytes); }

 private:
  void read();

  std::unique_ptr<QTcpSocket> socket_;
  bool reading_ = true;
};
