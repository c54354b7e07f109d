#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

#include "comm/portDevices_posix.h"
#include "comm/serialCalls.h"

// The terminal calls, with the results and time-outs of the Windows calls.

namespace {

using Tclock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr std::array<std::pair<std::uint32_t, speed_t>, 12> speeds = {{{1200, B1200},
                                                                       {2400, B2400},
                                                                       {4800, B4800},
                                                                       {9600, B9600},
                                                                       {19200, B19200},
                                                                       {38400, B38400},
                                                                       {57600, B57600},
                                                                       {115200, B115200},
                                                                       {230400, B230400},
                                                                       {460800, B460800},
                                                                       {500000, B500000},
                                                                       {921600, B921600}}};

constexpr std::array<tcflag_t, 4> byteSizes = {CS5, CS6, CS7, CS8};
constexpr unsigned smallestByteSize = 5;

bool refuse() {
  errno = EINVAL;
  return false;
}

void setFlag(tcflag_t& flags, tcflag_t flag, bool on) {
  flags = on ? flags | flag : flags & ~flag;
}

/// Waits until the port is ready; false when the time is up. A signal interrupts the call but not the wait.
bool waitUntil(int fd, short events, Tclock::time_point end) {
  pollfd port = {fd, events, 0};
  int ready = 0;
  do {
    const auto left = std::chrono::ceil<milliseconds>(end - Tclock::now());
    ready = poll(&port, 1, static_cast<int>(std::max(left, milliseconds(0)).count()));
  } while (ready < 0 && errno == EINTR);
  return ready > 0;
}

bool canBeRepeated(int error) {
  return error == EAGAIN || error == EINTR;
}

/// Lets all bytes pass unchanged and without flow control, and drops old input, which survives a close of the port.
bool startRaw(int fd) {
  termios mode = {};
  if (tcgetattr(fd, &mode) != 0) return false;
  cfmakeraw(&mode);
  setFlag(mode.c_cflag, CRTSCTS, false);
  setFlag(mode.c_cflag, CLOCAL | CREAD, true);
  setFlag(mode.c_iflag, IXOFF | IXANY, false);
  mode.c_cc[VMIN] = 0;
  mode.c_cc[VTIME] = 0;
  return tcsetattr(fd, TCSANOW, &mode) == 0 && tcflush(fd, TCIOFLUSH) == 0;
}

/// The number in "COM5"; 0 if there is none.
int portNumber(std::string_view name) {
  constexpr std::string_view prefix = "COM";
  int number = 0;
  if (name.starts_with(prefix)) std::from_chars(name.data() + prefix.size(), name.data() + name.size(), number);
  return number;
}

/// Opens a device for this program alone. Returns -1 if another program uses it or it is no serial port.
int openAlone(const std::string& device) {
  const int fd = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) return -1;
  termios mode = {};
  if (flock(fd, LOCK_EX | LOCK_NB) == 0 && tcgetattr(fd, &mode) == 0) return fd;
  const int error = errno;
  ::close(fd);
  errno = error;
  return -1;
}

class TposixSerialCalls final : public TserialCalls {
 public:
  bool isFree(int number) override {
    const int fd = openAlone(portDevice(number));
    return fd >= 0 && ::close(fd) == 0;
  }

  Thandle open(const std::string& name) override {
    const int fd = openAlone(portDevice(portNumber(name)));
    if (fd < 0) return invalidHandle;
    if (startRaw(fd)) return fd;
    const int error = errno;
    ::close(fd);
    errno = error;
    return invalidHandle;
  }

  bool close(Thandle port) override {
    {
      const std::lock_guard lock(mutex_);
      timeouts_.erase(port);
    }
    return ::close(static_cast<int>(port)) == 0;
  }

  bool getState(Thandle port, TserialState& state) override {
    termios mode = {};
    if (tcgetattr(static_cast<int>(port), &mode) != 0) return false;
    for (const auto& [baudRate, speed] : speeds) {
      if (cfgetospeed(&mode) == speed) state.baudRate = baudRate;
    }
    const auto* size = std::find(byteSizes.begin(), byteSizes.end(), mode.c_cflag & CSIZE);
    state.byteSize = static_cast<std::uint8_t>(smallestByteSize + (size - byteSizes.begin()));
    state.parity = (mode.c_cflag & PARENB) == 0 ? 0 : (mode.c_cflag & PARODD) != 0 ? 1 : 2;
    state.stopBits = (mode.c_cflag & CSTOPB) != 0 ? 2 : 0;
    return true;
  }

  bool setState(Thandle port, const TserialState& state) override {
    const auto* speed =
        std::find_if(speeds.begin(), speeds.end(), [&](const auto& known) { return known.first == state.baudRate; });
    const unsigned size = state.byteSize - smallestByteSize;
    if (speed == speeds.end() || size >= byteSizes.size() || state.parity > 2 || state.stopBits > 2) return refuse();
    const int fd = static_cast<int>(port);
    termios mode = {};
    if (tcgetattr(fd, &mode) != 0 || cfsetspeed(&mode, speed->second) != 0) return false;
    mode.c_cflag = (mode.c_cflag & ~static_cast<tcflag_t>(CSIZE)) | byteSizes.at(size);
    setFlag(mode.c_cflag, PARENB, state.parity != 0);
    setFlag(mode.c_cflag, PARODD, state.parity == 1);
    setFlag(mode.c_cflag, CSTOPB, state.stopBits != 0);
    return tcsetattr(fd, TCSANOW, &mode) == 0;
  }

  bool setQueues(Thandle port, std::uint32_t, std::uint32_t) override {
    return isatty(static_cast<int>(port)) == 1;  // the system's queues have a fixed size
  }

  bool setTimeouts(Thandle port, const TserialTimeouts& timeouts) override {
    const std::lock_guard lock(mutex_);
    timeouts_[port] = timeouts;
    return true;
  }

  bool read(Thandle port, std::span<char> buffer, std::uint32_t& done) override {
    const int fd = static_cast<int>(port);
    const TserialTimeouts times = timeoutsOf(port);
    const auto end = Tclock::now() + milliseconds(times.readConstant + times.readMultiplier * buffer.size());
    for (done = 0; done < buffer.size();) {
      const auto gapEnd = done > 0 ? Tclock::now() + milliseconds(times.readInterval) : end;
      if (!waitUntil(fd, POLLIN, std::min(gapEnd, end))) break;
      const auto count = ::read(fd, buffer.data() + done, buffer.size() - done);
      if (count < 0 && canBeRepeated(errno)) continue;
      if (count <= 0) return done > 0;
      done += static_cast<std::uint32_t>(count);
    }
    return true;
  }

  bool write(Thandle port, std::span<const char> bytes, std::uint32_t& done) override {
    const int fd = static_cast<int>(port);
    const TserialTimeouts times = timeoutsOf(port);
    const auto end = Tclock::now() + milliseconds(times.writeConstant + times.writeMultiplier * bytes.size());
    for (done = 0; done < bytes.size();) {
      const auto count = ::write(fd, bytes.data() + done, bytes.size() - done);
      if (count < 0 && !canBeRepeated(errno)) return false;
      done += static_cast<std::uint32_t>(std::max<ssize_t>(count, 0));
      if (done < bytes.size() && !waitUntil(fd, POLLOUT, end)) break;
    }
    return true;
  }

  void discardInput(Thandle port) override { tcflush(static_cast<int>(port), TCIFLUSH); }

  bool inputCount(Thandle port, std::uint32_t& count) override {
    pollfd line = {static_cast<int>(port), POLLIN, 0};
    int waiting = 0;
    if (poll(&line, 1, 0) < 0 || ioctl(line.fd, FIONREAD, &waiting) != 0) return false;
    count = static_cast<std::uint32_t>(waiting);
    if (waiting > 0 || (line.revents & (POLLHUP | POLLERR | POLLNVAL)) == 0) return true;
    errno = EIO;  // hung up, and no byte is left to read
    return false;
  }

  void awaitInput(Thandle port, milliseconds slot) override {
    waitUntil(static_cast<int>(port), POLLIN, Tclock::now() + slot);
  }

  std::uint32_t lastError() override { return static_cast<std::uint32_t>(errno); }

 private:
  TserialTimeouts timeoutsOf(Thandle port) {
    const std::lock_guard lock(mutex_);
    return timeouts_[port];
  }

  std::mutex mutex_;  ///< the search for free ports runs on its own thread
  std::map<Thandle, TserialTimeouts> timeouts_;
};

}  // namespace

TserialCalls& systemSerialCalls() {
  static TposixSerialCalls calls;
  return calls;
}
