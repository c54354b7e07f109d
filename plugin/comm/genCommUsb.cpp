#include <array>
#include <utility>

#include "comm/commStruct.h"
#include "comm/genComm.h"
#include "comm/transportMessages.h"

// The USB transport.

namespace {

/// What analyzers call themselves; the two differ in more than their last word.
constexpr std::array<const char*, 2> descriptions = {"Velmora Systems QT484 Plus", "Velmora Systems Qt484 Final"};

}  // namespace

void TDataCommClass::openUsb() {
  if (!resources_->open(TcommStruct::usbKind)) {
    closeUsbDevice();  // the holder frees the place of the handle only
    resources_->close();
    if (!resources_->open(TcommStruct::usbKind)) {
      show(noUsbHandle);
      throw TnoDeviceAttachedException();
    }
  }
  openUsbDevice();
}

void TDataCommClass::openUsbDevice() {
  Td2xxCalls::Thandle* cell = resources_->usb();
  if (!cell) throw TnoDeviceAttachedException();
  for (const char* description : descriptions) {
    usbOpen_ = resources_->usbCalls().openEx(description, Td2xxCalls::openByDescription, cell) == 0;
    if (usbOpen_) return;
  }
  show(noUsbDevice);
  throw TnoDeviceAttachedException();
}

void TDataCommClass::closeUsbDevice() {
  if (std::exchange(usbOpen_, false) && resources_->usb()) resources_->usbCalls().close(*resources_->usb());
}

int TDataCommClass::usbRead(void* buffer, std::uint32_t count) {
  std::uint32_t done = 0;
  const auto status = resources_->usbCalls().read(*resources_->usb(), buffer, count, &done);
  return status == 0 && done == count ? commSuccess : commFailed;
}

int TDataCommClass::usbWrite(const void* buffer, std::uint32_t count) {
  std::uint32_t done = 0;
  const auto status = resources_->usbCalls().write(*resources_->usb(), buffer, count, &done);
  return status == 0 && done == count ? commSuccess : commFailed;
}

std::uint32_t TDataCommClass::usbBytesWaiting() {
  std::uint32_t waiting = 0;
  if (resources_->usbCalls().getQueueStatus(*resources_->usb(), &waiting) != 0) throw TnoDeviceAttachedException();
  return waiting;
}
