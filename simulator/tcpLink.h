#pragma once

#include <memory>

#include "simulator/link.h"

class QTcpSocket;

/// A TCP connection.
class TtcpLink : public Tlink {
  Q_OBJECT
 public:
  /// Takes a connected socket over.
  explicit TtcpLink(std::unique_ptr<QTcpSocket> socket, TlinkKind kind = TlinkKind::tcp);
  ~TtcpLink() override;

  void send(const QByteArray& bytes) override;
  void stopReading() override;
  void close() override;
  void reset() override;
  /// Takes what has come, its end included, without waiting for the event loop.
  void catchUp();

 protected:
  /// Takes what came over the socket.
  virtual void decode(const QByteArray& bytes) { emit received(bytes); }

 private:
  void read();

  std::unique_ptr<QTcpSocket> socket_;
  bool reading_ = true;
};
