#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>

/// What a serial port is set to; the numbers are those of the Windows device control block.
struct TserialState {
  std::uint32_t baudRate = 9600;
  std::uint8_t byteSize = 8;
  std::uint8_t parity = 0;    ///< 0 none, 1 odd, 2 even
  std::uint8_t stopBits = 0;  ///< 0 one, 1 one and a half, 2 two
};

/// How long reads and writes may take, in ms: a read ends at a gap between two bytes, and everything after a constant
/// plus so much a byte.
struct TserialTimeouts {
  std::uint32_t readInterval = 15;
  std::uint32_t readMultiplier = 1;
  std::uint32_t readConstant = 250;
  std::uint32_t writeMultiplier = 1;
  std::uint32_t writeConstant = 250;
};

/// The operating system's serial port calls, as narrow as the serial channel needs them. Each but `open` tells whether
/// it succeeded; after a failure `lastError` gives the system's error number. To be called by any one thread at a time.
class TserialCalls {
 public:
  using Thandle = std::intptr_t;
  static constexpr Thandle invalidHandle = -1;

  virtual ~TserialCalls() = default;

  /// Whether "COM<number>" can be opened now; it is closed again at once.
  virtual bool isFree(int number) = 0;

  /// Opens a port ("COM5") for reading and writing, for this program alone; `invalidHandle` where it cannot be.
  virtual Thandle open(const std::string& name) = 0;
  virtual bool close(Thandle port) = 0;

  virtual bool getState(Thandle port, TserialState& state) = 0;
  /// Changes what `state` names; bytes then pass unchanged and without flow control where the system has such modes.
  virtual bool setState(Thandle port, const TserialState& state) = 0;
  /// Asks for queues of so many bytes.
  virtual bool setQueues(Thandle port, std::uint32_t input, std::uint32_t output) = 0;
  virtual bool setTimeouts(Thandle port, const TserialTimeouts& timeouts) = 0;

  /// Reads or writes until all is done or the time is up; `done` is the number of bytes.
  virtual bool read(Thandle port, std::span<char> buffer, std::uint32_t& done) = 0;
  virtual bool write(Thandle port, std::span<const char> bytes, std::uint32_t& done) = 0;

  /// The number of bytes that can be read now. Fails where the line is gone.
  virtual bool inputCount(Thandle port, std::uint32_t& count) = 0;
  /// Returns after `slot`, or earlier when a byte may have come.
  virtual void awaitInput(Thandle port, std::chrono::milliseconds slot) = 0;

  virtual std::uint32_t lastError() = 0;
};

/// This machine's.
TserialCalls& systemSerialCalls();
