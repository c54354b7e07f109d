#pragma once

#include <memory>

#include "comm/commPort.h"
#include "comm/d2xxCalls.h"

class QTcpSocket;

/// The system calls that the channels use; tests replace them.
struct TcommDrivers {
  TserialCalls& serial = systemSerialCalls();
  Td2xxCalls& usb = systemD2xxCalls();
};

/// Holds the resources of one connection: one slot for each transport, at most one of them in use. Used on one thread
/// from `open` to `close`.
class TcommStruct {
 public:
  enum Tkind { usbKind = 1, serialKind = 2, ethernetKind = 3 };

  explicit TcommStruct(const TcommDrivers& drivers = {});
  TcommStruct(const TcommStruct&) = delete;
  TcommStruct& operator=(const TcommStruct&) = delete;
  ~TcommStruct();

  /// Fills the slot of a kind and returns its address. Returns null and changes nothing if a slot is in use or the kind
  /// is unknown.
  void* open(int kind);

  /// Empties the slots and returns 0, or -1 if none was in use. Closes an open serial port, but not a USB device: the
  /// channel closes it before.
  int close();
  /// Does the same whether or not a slot is in use.
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
