#include "comm/commStruct.h"
#include "comm/genComm.h"
#include "comm/transportMessages.h"

// The serial transport.

void TDataCommClass::openSerial() {
  serialLost_ = false;
  const auto& settings = parameters<TserialParameters>();
  if (!resources_->open(TcommStruct::serialKind)) {
    show(noSerialSlot);
    throw TinitializationException();
  }
  try {
    openPort(settings);
  } catch (const ECommError& error) {
    showSerialError(error);
    throw TinitializationException();
  } catch (...) {
    show(serialOpenFailed);
    throw TinitializationException();
  }
}

void TDataCommClass::openPort(const TserialParameters& parameters) {
  TCommPort& port = *resources_->serial();
  port.setBaudRate(parameters.baudRate);
  port.setParity(parameters.parity);
  port.setStopBits(parameters.stopBits);
  port.setByteSize(parameters.byteSize);
  port.setName(parameters.portName.data());
  port.open();
}

int TDataCommClass::serialRead(void* buffer, std::size_t count) try {
  return resources_->serial()->read({static_cast<char*>(buffer), count}) == count ? commSuccess : commFailed;
} catch (const ECommError& error) {
  showSerialError(error);
  return commFailed;
}

int TDataCommClass::serialWrite(const void* buffer, std::size_t count) try {
  return resources_->serial()->write({static_cast<const char*>(buffer), count}) == count ? commSuccess : commFailed;
} catch (const ECommError& error) {
  showSerialError(error);
  return commFailed;
}

/// A line that cannot be asked is a lost one.
std::uint32_t TDataCommClass::serialBytesWaiting() try {
  return resources_->serial()->bytesWaiting();
} catch (const ECommError& error) {
  serialLost_ = true;
  showSerialError(error);
  return 0;
}

void TDataCommClass::showSerialError(const ECommError& error) {
  show(serialErrorMessage(error.code()));
}
