#pragma once

#include "simulator/tcpLink.h"

/// A connection from the stand-in D2XX driver, from FT_OpenEx to FT_Close.
class TusbLink : public TtcpLink {
  Q_OBJECT
 public:
  /// Tells the driver the pending fault, if the driver is the one to play it.
  TusbLink(std::unique_ptr<QTcpSocket> socket, const TfaultScript& script);

 protected:
  void decode(const QByteArray& bytes) override;

 private:
  QByteArray pending_;
};
