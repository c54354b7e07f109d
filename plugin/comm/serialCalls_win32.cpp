#include <algorithm>
#include <string>
#include <windows.h>

#include "comm/serialCalls.h"

// The Windows communications calls.

namespace {

HANDLE toHandle(TserialCalls::Thandle port) {
  return reinterpret_cast<HANDLE>(port);  // NOLINT(performance-no-int-to-ptr): a handle is passed as a number
}

/// The full device name. Ports above COM9 have no shorter one.
std::string deviceName(const std::string& port) {
  return "\\\\.\\" + port;
}

/// Switches off whatever another program may have set that stops the line or drops bytes: blocks hold any byte, and the
/// analyzer's cable need not have a line for flow control. Our own lines say that we are ready, as they do elsewhere.
void letAllPass(DCB& block) {
  block.fBinary = TRUE;
  block.fOutX = block.fInX = block.fNull = block.fErrorChar = FALSE;
  block.fOutxCtsFlow = block.fOutxDsrFlow = block.fDsrSensitivity = block.fAbortOnError = FALSE;
  block.fDtrControl = DTR_CONTROL_ENABLE;
  block.fRtsControl = RTS_CONTROL_ENABLE;
}

class Twin32SerialCalls final : public TserialCalls {
 public:
  bool isFree(int number) override {
    const HANDLE port = CreateFileA(deviceName("COM" + std::to_string(number)).c_str(), GENERIC_READ, 0, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
    return port != INVALID_HANDLE_VALUE && CloseHandle(port) != 0;
  }

  Thandle open(const std::string& name) override {
    return reinterpret_cast<Thandle>(
        CreateFileA(deviceName(name).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  }

  bool close(Thandle port) override { return CloseHandle(toHandle(port)) != 0; }

  bool getState(Thandle port, TserialState& state) override {
    DCB block = {};
    block.DCBlength = sizeof block;
    if (GetCommState(toHandle(port), &block) == 0) return false;
    state = {block.BaudRate, block.ByteSize, block.Parity, block.StopBits};
    return true;
  }

  bool setState(Thandle port, const TserialState& state) override {
    DCB block = {};
    block.DCBlength = sizeof block;
    if (GetCommState(toHandle(port), &block) == 0) return false;
    block.BaudRate = state.baudRate;
    block.ByteSize = state.byteSize;
    block.Parity = state.parity;
    block.StopBits = state.stopBits;
    letAllPass(block);
    return SetCommState(toHandle(port), &block) != 0;
  }

  bool setQueues(Thandle port, std::uint32_t input, std::uint32_t output) override {
    return SetupComm(toHandle(port), input, output) != 0;
  }

  bool setTimeouts(Thandle port, const TserialTimeouts& timeouts) override {
    COMMTIMEOUTS block = {timeouts.readInterval, timeouts.readMultiplier, timeouts.readConstant,
                          timeouts.writeMultiplier, timeouts.writeConstant};
    return SetCommTimeouts(toHandle(port), &block) != 0;
  }

  bool read(Thandle port, std::span<char> buffer, std::uint32_t& done) override {
    DWORD count = 0;
    const bool succeeded =
        ReadFile(toHandle(port), buffer.data(), static_cast<DWORD>(buffer.size()), &count, nullptr) != 0;
    done = count;
    return succeeded;
  }

  bool write(Thandle port, std::span<const char> bytes, std::uint32_t& done) override {
    DWORD count = 0;
    const bool succeeded =
        WriteFile(toHandle(port), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) != 0;
    done = count;
    return succeeded;
  }

  void discardInput(Thandle port) override { PurgeComm(toHandle(port), PURGE_RXCLEAR); }

  bool inputCount(Thandle port, std::uint32_t& count) override {
    DWORD errors = 0;
    COMSTAT status = {};
    if (ClearCommError(toHandle(port), &errors, &status) == 0) return false;
    count = status.cbInQue;
    return true;
  }

  void awaitInput(Thandle, std::chrono::milliseconds slot) override {
    // Without overlapped I/O there is no wait with a time-out.
    Sleep(static_cast<DWORD>(std::clamp<long long>(slot.count(), 0, 1)));
  }

  std::uint32_t lastError() override { return GetLastError(); }
};

}  // namespace

TserialCalls& systemSerialCalls() {
  static Twin32SerialCalls calls;
  return calls;
}
