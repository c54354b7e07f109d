#include <array>
#include <string>
#include <utility>

#include "comm/commMessages.h"
#include "comm/commStruct.h"
#include "comm/genComm.h"

// The USB transport.

namespace {

/// The device descriptions of analyzers. They differ in letter case, too.
constexpr std::array<const char*, 2> descriptions = {"Velmora Systems QT484 Plus", "Velmora Systems Qt484 Final"};

/// A transfer that the device does not accept ends by then, in ms; only then does a cancel take effect.
constexpr std::uint32_t transferTimeout = 500;

std::string statusText(Td2xxCalls::Tstatus status) {
  return "driver status " + std::to_string(status);
}

}  // namespace

void TDataCommClass::openUsb() {
  if (!resources_->open(TcommStruct::usbKind)) {
    closeUsbDevice();  // the holder frees only the memory of the handle
    resources_->close();
    if (!resources_->open(TcommStruct::usbKind)) {
      show(noUsbHandle);
      throw TnoDeviceAttachedException(failureText("open", "no place for its handle"));
    }
  }
  openUsbDevice();
}

void TDataCommClass::openUsbDevice() {
  Td2xxCalls::Thandle* cell = resources_->usb();
  if (!cell) throw TnoDeviceAttachedException();
  std::string reason;
  for (const char* description : descriptions) {
    const auto status = resources_->usbCalls().openEx(description, Td2xxCalls::openByDescription, cell);
    usbOpen_ = status == 0;
    if (usbOpen_) {
      resources_->usbCalls().setTimeouts(*cell, transferTimeout, transferTimeout);
      return;
    }
    reason += (reason.empty() ? "" : ", ") + statusText(status) + " for " + description;
  }
  if (!resources_->usbCalls().isInstalled()) reason = noUsbDriver;
  show(noUsbDevice);
  throw TnoDeviceAttachedException(failureText("open", reason));
}

void TDataCommClass::closeUsbDevice() {
  if (std::exchange(usbOpen_, false) && resources_->usb()) resources_->usbCalls().close(*resources_->usb());
}

int TDataCommClass::usbRead(void* buffer, std::uint32_t count) {
  std::uint32_t done = 0;
  const auto status = resources_->usbCalls().read(*resources_->usb(), buffer, count, &done);
  return status == 0 ? transferred("read", done, count) : failed("read", statusText(status));
}

int TDataCommClass::usbWrite(const void* buffer, std::uint32_t count) {
  std::uint32_t done = 0;
  const auto status = resources_->usbCalls().write(*resources_->usb(), buffer, count, &done);
  return status == 0 ? transferred("write", done, count) : failed("write", statusText(status));
}

std::uint32_t TDataCommClass::usbBytesWaiting() {
  std::uint32_t waiting = 0;
  const auto status = resources_->usbCalls().getQueueStatus(*resources_->usb(), &waiting);
  if (status == 0) return waiting;
  throw TnoDeviceAttachedException(failureText("count the bytes of", statusText(status)));
}
