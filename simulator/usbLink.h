#pragma once

#include "simulator/tcpLink.h"

/// A connection from the stand-in D2XX driver: from one FT_OpenEx to its FT_Close.
class TusbLink : public TtcpLink {
  Q_OBJECT
 public:
  /// Tells the driver the fault of the script, where it is one that the driver plays.
  TusbLink(std::unique_ptr<QTcpSocket> socket, const TfaultScript& script);

 protected:
  void decode(const QByteArray& bytes) override;

 private:
  QByteArray pending_;
};
