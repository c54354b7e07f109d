#pragma once

#include <memory>

#include "comm/commPort.h"
#include "comm/d2xxCalls.h"

class QTcpSocket;

/// What the channels reach the analyzer by; a test puts its own in their place.
struct TcommDrivers {
  TserialCalls& serial = systemSerialCalls();
  Td2xxCalls& usb = systemD2xxCalls();
};

/// Holds the resources of one connection: one slot for each transport, of which one at most is in use. To be used on
/// one thread from `open` to `close`.
class TcommStruct {
 public:
  enum Tkind { usbKind = 1, serialKind = 2, ethernetKind = 3 };

  explicit TcommStruct(const TcommDrivers& drivers = {});
  TcommStruct(const TcommStruct&) = delete;
  TcommStruct& operator=(const TcommStruct&) = delete;
  ~TcommStruct();

  /// Fills the slot of a kind and returns its address; null, and nothing changed, where a slot is in use already or the
  /// kind is none.
  void* open(int kind);

  /// Empties the slots. 0, or -1 where none was in use. A serial port that is open is closed; of a USB device only the
  /// place of its handle goes.
  int close();
  /// As `close`, whether one is in use or not.
  int reset();

  bool isInUse() const { return inUse_; }
  Td2xxCalls& usbCalls() const { return drivers_.usb; }
  Td2xxCalls::Thandle* usb() const { return usb_.get(); }
  TCommPort* serial() const { return serial_.get(); }
  QTcpSocket* ethernet() const { return ethernet_.get(); }

 private:
  TcommDrivers drivers_;
  std::unique_ptr<Td2xxCalls::Thandle> usb_;
  std::unique_ptr<TCommPort> serial_;
  std::unique_ptr<QTcpSocket> ethernet_;
  bool inUse_ = false;
};
