#include "comm/commPort.h"

#include <array>
#include <utility>

#include "support/failure.h"

namespace {

constexpr std::uint32_t inputQueue = 32768;
constexpr std::uint32_t outputQueue = 9216;

/// Indexed by the error's code.
constexpr std::array<TserialErrorText, 19> errorTexts = {{{"use", "Bad Serial Port!"},
                                                          {"set the baud rate of", "Bad Baud Rate!"},
                                                          {"find", "Bad Port Number!"},
                                                          {"set the stop bits of", "Bad Stop Bits!"},
                                                          {"set the parity of", "Bad Parity!"},
                                                          {"set the byte size of", "Bad Byte Size!"},
                                                          {"rename", "Port Already Open!"},
                                                          {"use", "Port Not Open!"},
                                                          {"open", "Open Error!"},
                                                          {"write", "Write Error!"},
                                                          {"read", "Read Error!"},
                                                          {"close", "Close Error!"},
                                                          {"purge", "Purge Comm Error!"},
                                                          {"flush", "Flush File Buffers Error!"},
                                                          {"get the state of", "Get Comm State Error!"},
                                                          {"set the state of", "Set Comm State Error!"},
                                                          {"set the queues of", "Setup Comm Error!"},
                                                          {"set the time-outs of", "Set Comm Timeouts Error!"},
                                                          {"count the bytes of", "Clear Comm Error!"}}};

/// The system has no text for the misuse of a port.
std::string reasonOf(ECommError::Tcode code, std::uint32_t systemError) {
  if (code == ECommError::alreadyOpen) return "the port is open";
  if (code == ECommError::notOpen) return "the port is not open";
  return systemErrorText(static_cast<int>(systemError));
}

}  // namespace

TserialErrorText serialErrorText(ECommError::Tcode code) {
  const auto index = static_cast<std::size_t>(code);
  return code >= 0 && index < errorTexts.size() ? errorTexts.at(index) : TserialErrorText{nullptr, nullptr};
}

ECommError::ECommError(Tcode code, std::uint32_t systemError, const std::string& port)
    : code_(code), systemError_(systemError) {
  const char* operation = serialErrorText(code).operation;
  reason_ = Tfailure{operation ? operation : "use", port, reasonOf(code, systemError)}.text();
}

TCommPort::~TCommPort() {
  if (isOpen()) calls_.close(handle_);
}

void TCommPort::setName(const std::string& name) {
  if (isOpen()) throw ECommError(ECommError::alreadyOpen, calls_.lastError(), name_);
  name_ = name;
}

void TCommPort::setBaudRate(std::uint32_t value) {
  change(&TserialState::baudRate, value, ECommError::badBaudRate);
}

void TCommPort::setByteSize(std::uint8_t value) {
  change(&TserialState::byteSize, value, ECommError::badByteSize);
}

void TCommPort::setParity(std::uint8_t value) {
  change(&TserialState::parity, value, ECommError::badParity);
}

void TCommPort::setStopBits(std::uint8_t value) {
  change(&TserialState::stopBits, value, ECommError::badStopBits);
}

template <typename T>
void TCommPort::change(T TserialState::*member, T value, ECommError::Tcode code) {
  const T old = std::exchange(state_.*member, value);
  if (!isOpen() || calls_.setState(handle_, state_)) return;
  const std::uint32_t systemError = calls_.lastError();
  state_.*member = old;
  throw ECommError(code, systemError, name_);
}

void TCommPort::open() {
  if (isOpen()) throw ECommError(ECommError::alreadyOpen, calls_.lastError(), name_);
  handle_ = calls_.open(name_);
  check(isOpen(), ECommError::openFailed);
  TserialState found;
  checkOpening(calls_.getState(handle_, found), ECommError::getStateFailed);
  checkOpening(calls_.setState(handle_, state_), ECommError::setStateFailed);
  checkOpening(calls_.setQueues(handle_, inputQueue, outputQueue), ECommError::setupFailed);
  checkOpening(calls_.setTimeouts(handle_, timeouts_), ECommError::setTimeoutsFailed);
}

void TCommPort::close() {
  if (!isOpen()) return;
  check(calls_.close(std::exchange(handle_, TserialCalls::invalidHandle)), ECommError::closeFailed);
}

std::uint32_t TCommPort::read(std::span<char> buffer) {
  requireOpen();
  std::uint32_t done = 0;
  check(calls_.read(handle_, buffer, done), ECommError::readFailed);
  if (done < buffer.size()) buffer[done] = 0;
  return done;
}

std::uint32_t TCommPort::write(std::span<const char> bytes) {
  requireOpen();
  std::uint32_t done = 0;
  check(calls_.write(handle_, bytes, done), ECommError::writeFailed);
  return done;
}

void TCommPort::discardInput() {
  requireOpen();
  calls_.discardInput(handle_);
}

std::uint32_t TCommPort::bytesWaiting() {
  requireOpen();
  std::uint32_t count = 0;
  check(calls_.inputCount(handle_, count), ECommError::clearErrorFailed);
  return count;
}

void TCommPort::check(bool succeeded, ECommError::Tcode code) {
  if (!succeeded) throw ECommError(code, calls_.lastError(), name_);
}

/// Checks a step of opening. A failed step closes the port, but the step's own error is thrown.
void TCommPort::checkOpening(bool succeeded, ECommError::Tcode code) {
  if (succeeded) return;
  const std::uint32_t systemError = calls_.lastError();
  calls_.close(std::exchange(handle_, TserialCalls::invalidHandle));
  throw ECommError(code, systemError, name_);
}

void TCommPort::requireOpen() {
  check(isOpen(), ECommError::notOpen);
}
