#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>

/// The settings of a serial port, with the numbers of the Windows device control block.
struct TserialState {
  std::uint32_t baudRate = 9600;
  std::uint8_t byteSize = 8;
  std::uint8_t parity = 0;    ///< 0 none, 1 odd, 2 even
  std::uint8_t stopBits = 0;  ///< 0 one, 1 one and a half, 2 two
};

/// Time-outs in ms. A read or write ends after the constant plus the multiplier for each byte; a read also ends at a
/// gap of `readInterval` between two bytes.
struct TserialTimeouts {
  std::uint32_t readInterval = 15;
  std::uint32_t readMultiplier = 1;
  std::uint32_t readConstant = 250;
  std::uint32_t writeMultiplier = 1;
  std::uint32_t writeConstant = 250;
};

/// The operating system's serial port calls that the serial channel needs. All functions that return `bool` return
/// whether they succeeded; after a failure `lastError` returns the system's error number. May be called from any
/// thread, but not from two at once.
class TserialCalls {
 public:
  using Thandle = std::intptr_t;
  static constexpr Thandle invalidHandle = -1;

  virtual ~TserialCalls() = default;

  /// Whether "COM<number>" can be opened. Closes it again at once.
  virtual bool isFree(int number) = 0;

  /// Opens a port ("COM5") for reading and writing, for this program alone. Returns `invalidHandle` on failure.
  virtual Thandle open(const std::string& name) = 0;
  virtual bool close(Thandle port) = 0;

  virtual bool getState(Thandle port, TserialState& state) = 0;
  /// Applies the settings. Bytes then pass unchanged and without flow control, whatever another program has set.
  virtual bool setState(Thandle port, const TserialState& state) = 0;
  /// Requests input and output queues of these sizes in bytes.
  virtual bool setQueues(Thandle port, std::uint32_t input, std::uint32_t output) = 0;
  virtual bool setTimeouts(Thandle port, const TserialTimeouts& timeouts) = 0;

  /// Reads or writes until everything is done or the time is up; `done` is the number of bytes.
  virtual bool read(Thandle port, std::span<char> buffer, std::uint32_t& done) = 0;
  virtual bool write(Thandle port, std::span<const char> bytes, std::uint32_t& done) = 0;

  /// Drops the bytes that could be read now.
  virtual void discardInput(Thandle port) = 0;
  /// Counts the bytes that can be read now. Fails if the line is gone.
  virtual bool inputCount(Thandle port, std::uint32_t& count) = 0;
  /// Returns after `slot`, or earlier if a byte may have come.
  virtual void awaitInput(Thandle port, std::chrono::milliseconds slot) = 0;

  virtual std::uint32_t lastError() = 0;
};

/// The calls of this system.
TserialCalls& systemSerialCalls();
