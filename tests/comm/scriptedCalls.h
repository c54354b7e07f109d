#pragma once

#include <QByteArrayList>
#include <algorithm>

#include "comm/commParameters.h"
#include "comm/d2xxCalls.h"
#include "comm/serialCalls.h"

inline const TcommParameters usbParameters = TusbParameters();

/// Records calls. Those that start with `failing` fail.
struct TscriptedCalls {
  QByteArray failing;
  QByteArrayList calls;
  std::uint32_t transfer = 1000;  ///< the most bytes of one read or write

  bool succeeds(const QByteArray& call) {
    calls << call;
    return failing.isEmpty() || !call.startsWith(failing);
  }
};

/// A serial port that only records the calls.
class TscriptedSerial final : public TserialCalls, public TscriptedCalls {
 public:
  TserialState set;  ///< the last state that was set

  bool isFree(int) override { return succeeds("isFree"); }
  Thandle open(const std::string& name) override {
    return succeeds("open " + QByteArray(name.c_str())) ? 7 : invalidHandle;
  }
  bool close(Thandle) override { return succeeds("close"); }
  bool getState(Thandle, TserialState&) override { return succeeds("getState"); }
  bool setState(Thandle, const TserialState& state) override {
    if (!succeeds("setState")) return false;
    set = state;
    return true;
  }
  bool setQueues(Thandle, std::uint32_t input, std::uint32_t output) override {
    return succeeds("setQueues " + QByteArray::number(input) + ' ' + QByteArray::number(output));
  }
  bool setTimeouts(Thandle, const TserialTimeouts&) override { return succeeds("setTimeouts"); }
  bool read(Thandle, std::span<char> buffer, std::uint32_t& done) override {
    done = std::min(transfer, static_cast<std::uint32_t>(buffer.size()));
    std::fill_n(buffer.begin(), done, 'r');
    return succeeds("read");
  }
  bool write(Thandle, std::span<const char> bytes, std::uint32_t& done) override {
    done = std::min(transfer, static_cast<std::uint32_t>(bytes.size()));
    return succeeds("write");
  }
  void discardInput(Thandle) override { succeeds("discard"); }
  bool inputCount(Thandle, std::uint32_t& count) override {
    count = transfer;
    return succeeds("inputCount");
  }
  void awaitInput(Thandle, std::chrono::milliseconds) override {}
  std::uint32_t lastError() override { return 1001 + static_cast<std::uint32_t>(calls.size()); }
};

/// The same for the USB driver.
class TscriptedUsb final : public Td2xxCalls, public TscriptedCalls {
 public:
  Tstatus openEx(const char* description, std::uint32_t flags, Thandle* handle) override {
    *handle = this;
    return status("open " + QByteArray(description) + ' ' + QByteArray::number(flags));
  }
  Tstatus close(Thandle handle) override { return status(handle == this ? "close" : "close of another"); }
  Tstatus read(Thandle, void*, std::uint32_t count, std::uint32_t* done) override {
    *done = std::min(transfer, count);
    return status("read");
  }
  Tstatus write(Thandle, const void*, std::uint32_t count, std::uint32_t* done) override {
    *done = std::min(transfer, count);
    return status("write");
  }
  Tstatus getQueueStatus(Thandle, std::uint32_t* waiting) override {
    *waiting = transfer;
    return status("queue");
  }
  Tstatus setTimeouts(Thandle, std::uint32_t, std::uint32_t) override { return status("timeouts"); }
  Tstatus purge(Thandle, std::uint32_t which) override { return status("purge " + QByteArray::number(which)); }

 private:
  Tstatus status(const QByteArray& call) { return succeeds(call) ? 0 : 4; }
};
