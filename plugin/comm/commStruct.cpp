#include "comm/commStruct.h"

#include <QTcpSocket>

TcommStruct::TcommStruct(const TcommDrivers& drivers) : drivers_(drivers) {}

TcommStruct::~TcommStruct() = default;

void* TcommStruct::open(int kind) {
  if (inUse_) return nullptr;
  inUse_ = true;
  switch (kind) {
    case usbKind:
      usb_ = std::make_unique<Td2xxCalls::Thandle>();
      return &usb_;
    case serialKind:
      serial_ = std::make_unique<TCommPort>(drivers_.serial);
      return &serial_;
    case ethernetKind:
      ethernet_ = std::make_unique<QTcpSocket>();
      return &ethernet_;
    default:
      inUse_ = false;
      return nullptr;
  }
}

int TcommStruct::close() {
  return inUse_ ? reset() : -1;
}

int TcommStruct::reset() {
  usb_.reset();
  serial_.reset();
  ethernet_.reset();
  inUse_ = false;
  return 0;
}
