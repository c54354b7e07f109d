#include "comm/commMessages.h"
#include "comm/commStruct.h"
#include "comm/genComm.h"
#include "support/log.h"

// The serial transport.

void TDataCommClass::openSerial() {
  serialLost_ = false;
  const auto& settings = parameters<TserialParameters>();
  if (!resources_->open(TcommStruct::serialKind)) {
    show(noSerialSlot);
    throw TinitializationException(failureText("open", "another connection is open"));
  }
  try {
    openPort(settings);
  } catch (const ECommError& error) {
    showSerialError(error);
    throw TinitializationException(error.reason());
  } catch (...) {
    logCaught("opening " + target());
    show(serialOpenFailed);
    throw TinitializationException(failureText("open", "an unexpected exception"));
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
  return transferred("read", resources_->serial()->read({static_cast<char*>(buffer), count}), count);
} catch (const ECommError& error) {
  failure_ = error.reason();
  showSerialError(error);
  return commFailed;
}

int TDataCommClass::serialWrite(const void* buffer, std::size_t count) try {
  return transferred("write", resources_->serial()->write({static_cast<const char*>(buffer), count}), count);
} catch (const ECommError& error) {
  failure_ = error.reason();
  showSerialError(error);
  return commFailed;
}

/// A line that does not answer is lost.
std::uint32_t TDataCommClass::serialBytesWaiting() try {
  return resources_->serial()->bytesWaiting();
} catch (const ECommError& error) {
  serialLost_ = true;
  failure_ = error.reason();
  showSerialError(error);
  return 0;
}

void TDataCommClass::showSerialError(const ECommError& error) {
  show(serialErrorMessage(error.code()));
}
