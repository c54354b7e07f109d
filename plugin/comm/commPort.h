#pragma once

#include <cstdint>
#include <exception>
#include <span>
#include <string>

#include "comm/serialCalls.h"

/// A failure of a serial port: the code of its message, the system's error number, and the reason for the log.
class ECommError : public std::exception {
 public:
  enum Tcode : signed char {
    badPort = 0,
    badBaudRate = 1,
    badPortNumber = 2,
    badStopBits = 3,
    badParity = 4,
    badByteSize = 5,
    alreadyOpen = 6,
    notOpen = 7,
    openFailed = 8,
    writeFailed = 9,
    readFailed = 10,
    closeFailed = 11,
    purgeFailed = 12,
    flushFailed = 13,
    getStateFailed = 14,
    setStateFailed = 15,
    setupFailed = 16,
    setTimeoutsFailed = 17,
    clearErrorFailed = 18,
  };

  ECommError(Tcode code, std::uint32_t systemError, const std::string& port);

  const char* what() const noexcept override { return reason_.c_str(); }
  Tcode code() const { return code_; }
  std::uint32_t systemError() const { return systemError_; }
  /// "open COM5: Permission denied (13)"
  const std::string& reason() const { return reason_; }

 private:
  Tcode code_;
  std::uint32_t systemError_;
  std::string reason_;
};

/// What failed with an error, as a verb, and the error's message; both null for an unknown code.
struct TserialErrorText {
  const char* operation;
  const char* message;
};
TserialErrorText serialErrorText(ECommError::Tcode code);

/// One serial port; the destructor closes it. Every failure is an `ECommError`. A failed open leaves the port closed.
class TCommPort {
 public:
  explicit TCommPort(TserialCalls& calls) : calls_(calls) {}
  TCommPort(const TCommPort&) = delete;
  TCommPort& operator=(const TCommPort&) = delete;
  ~TCommPort();

  bool isOpen() const { return handle_ != TserialCalls::invalidHandle; }
  const std::string& name() const { return name_; }
  const TserialState& state() const { return state_; }

  /// Renames the port, which must be closed.
  void setName(const std::string& name);

  // These take effect at once if the port is open. A failure keeps the old value.
  void setBaudRate(std::uint32_t value);
  void setByteSize(std::uint8_t value);
  void setParity(std::uint8_t value);
  void setStopBits(std::uint8_t value);

  void open();
  void close();

  /// Reads up to the size of `buffer`, within the port's time-outs. If fewer bytes came, a zero byte follows them.
  std::uint32_t read(std::span<char> buffer);
  std::uint32_t write(std::span<const char> bytes);
  std::uint32_t bytesWaiting();
  /// Drops the bytes that could be read now.
  void discardInput();
  void awaitInput(std::chrono::milliseconds slot) { calls_.awaitInput(handle_, slot); }

 private:
  template <typename T>
  void change(T TserialState::*member, T value, ECommError::Tcode code);
  void check(bool succeeded, ECommError::Tcode code);
  void checkOpening(bool succeeded, ECommError::Tcode code);
  void requireOpen();

  TserialCalls& calls_;
  TserialTimeouts timeouts_;
  TserialState state_;
  std::string name_ = "COM1";
  TserialCalls::Thandle handle_ = TserialCalls::invalidHandle;
};
