#include <QElapsedTimer>
#include <QScopeGuard>
#include <QTest>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/time.h>
#include <termios.h>
#include <unistd.h>

#include "comm/portDevices_posix.h"
#include "comm/serialCalls.h"
#include "tools/testFiles.h"
#include "tools/testList.h"
#include "tools/testPlatform.h"

namespace {

volatile std::sig_atomic_t signalCount = 0;

/// Interrupts the program's system calls every 20 ms, as long as the result lives.
auto startSignals() {
  struct sigaction counting = {};
  counting.sa_handler = [](int) { signalCount = signalCount + 1; };
  sigaction(SIGALRM, &counting, nullptr);
  const itimerval every = {{0, 20000}, {0, 20000}};
  setitimer(ITIMER_REAL, &every, nullptr);
  return qScopeGuard([] {
    const itimerval never = {};
    setitimer(ITIMER_REAL, &never, nullptr);
  });
}

/// The far end of a pseudo-terminal whose near end is COM3; -1 where there is none.
int openFarEnd(const TtestFolder& folder) {
  const int farEnd = posix_openpt(O_RDWR | O_NOCTTY);
  if (farEnd < 0 || grantpt(farEnd) != 0 || unlockpt(farEnd) != 0) return -1;
  std::filesystem::create_symlink(ptsname(farEnd), folder / "com3");
  qputenv("QT484_PORTS", QByteArray(folder.path().c_str()));
  return farEnd;
}

}  // namespace

/// The system's serial port calls on a pseudo-terminal.
class TserialCallsTest : public QObject {
  Q_OBJECT

 private slots:
  void signalsShortenNoWait() {
    const TtestFolder folder;
    const int farEnd = openFarEnd(folder);
    QVERIFY(farEnd >= 0);
    TserialCalls& calls = systemSerialCalls();
    const auto port = calls.open("COM3");
    QVERIFY(calls.setTimeouts(port, {15, 10, 110, 0, 150}));
    const auto signalsEnd = startSignals();
    QElapsedTimer timer;
    timer.start();
    calls.awaitInput(port, std::chrono::milliseconds(150));
    QVERIFY(timer.restart() >= 150);
    std::array<char, 4> buffer{};
    std::uint32_t done = 0;
    QVERIFY(calls.read(port, buffer, done) && done == 0);
    QVERIFY(timer.restart() >= 150);
    const std::string tooMuch(1 << 20U, 'x');
    QVERIFY(calls.write(port, tooMuch, done) && done < tooMuch.size());
    QVERIFY(timer.elapsed() >= 150);
    QVERIFY(signalCount > 5);
    QVERIFY(calls.close(port));
    ::close(farEnd);
  }

  /// Neither a look nor an opening that fails keeps the port, waits for it, or leaves what came before.
  void aPortIsForOneProgram() {
    const TtestFolder folder;
    const int farEnd = openFarEnd(folder);
    QVERIFY(farEnd >= 0);
    TserialCalls& calls = systemSerialCalls();
    QVERIFY(!calls.isFree(4) && calls.lastError() == ENOENT);
    writeBytes(folder / "com5", "no port");
    const auto handles = openHandles();
    QVERIFY(calls.isFree(3) && calls.isFree(3) && !calls.isFree(5) && calls.open("COM5") < 0);
    QCOMPARE(openHandles(), handles);
    const int other = ::open((folder / "com3").c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    QVERIFY(flock(other, LOCK_EX) == 0);
    // With a wait for the lock this would not come back.
    QVERIFY(!calls.isFree(3) && calls.open("COM3") == TserialCalls::invalidHandle && calls.lastError() == EWOULDBLOCK);
    QCOMPARE(openHandles(), handles + 1);
    ::close(other);
    QVERIFY(::write(farEnd, "old\n", 4) == 4);
    const auto port = calls.open("COM3");
    std::uint32_t waiting = 1;
    QVERIFY(calls.inputCount(port, waiting) && waiting == 0);
    QVERIFY(!calls.isFree(3) && calls.close(port) && calls.isFree(3));
    QCOMPARE(openHandles(), handles);
    ::close(farEnd);
  }

  /// Whatever another program has set.
  void settingsReachTheLine() {
    const TtestFolder folder;
    const int farEnd = openFarEnd(folder);
    const int other = ::open((folder / "com3").c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios mode = {};
    QVERIFY(farEnd >= 0 && tcgetattr(other, &mode) == 0);
    mode.c_cflag |= CRTSCTS;
    mode.c_iflag |= IXON | IXOFF | IXANY | ISTRIP;
    QVERIFY(tcsetattr(other, TCSANOW, &mode) == 0);
    TserialCalls& calls = systemSerialCalls();
    const auto port = calls.open("COM3");
    TserialState got;
    for (const TserialState& state : {TserialState{19200, 8, 0, 0}, {1200, 8, 1, 2}, {921600, 8, 2, 0}}) {
      QVERIFY(calls.setState(port, state) && calls.getState(port, got) && tcgetattr(other, &mode) == 0);
      QVERIFY(got.baudRate == state.baudRate && got.byteSize == 8 && got.stopBits == state.stopBits);
      QCOMPARE((mode.c_cflag & PARODD) != 0, state.parity == 1);  // a pseudo-terminal has no parity itself
      QVERIFY((mode.c_cflag & (CRTSCTS | CLOCAL | CREAD)) == (CLOCAL | CREAD));
      QVERIFY((mode.c_iflag & (IXON | IXOFF | IXANY | ISTRIP)) == 0 && (mode.c_lflag & (ECHO | ICANON | ISIG)) == 0);
    }
    for (const TserialState& state : {TserialState{300}, {19200, 4}, {19200, 9}, {19200, 8, 3}, {19200, 8, 0, 3}}) {
      QVERIFY(!calls.setState(port, state) && calls.lastError() == EINVAL);
    }
    QVERIFY(calls.setTimeouts(port, {15, 0, 5000, 0, 0}) && ::write(farEnd, "ab", 2) == 2);
    std::array<char, 4> buffer{};
    std::uint32_t done = 0;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(calls.read(port, buffer, done) && done == 2 && timer.elapsed() < 2500);  // a gap ends it
    QVERIFY(calls.close(port));
    ::close(other);
    ::close(farEnd);
    QVERIFY(!calls.setState(port, {}) && !calls.inputCount(port, done) && !calls.close(port));
  }

  void portsHaveTheirDevices() {
    qunsetenv("QT484_PORTS");
    using Tcase = std::pair<int, const char*>;
    for (const auto& [number, device] : {Tcase(0, ""),
                                         {1, "/dev/ttyS0"},
                                         {100, "/dev/ttyS99"},
                                         {101, "/dev/ttyUSB0"},
                                         {256, "/dev/ttyACM55"},
                                         {257, ""}}) {
      QCOMPARE(portDevice(number).c_str(), device);
    }
  }

  void discardingLeavesNothingToRead() {
    const TtestFolder folder;
    const int farEnd = openFarEnd(folder);
    QVERIFY(farEnd >= 0);
    TserialCalls& calls = systemSerialCalls();
    const auto port = calls.open("COM3");
    std::uint32_t waiting = 0;
    const auto arrived = [&](const char* bytes) {
      QVERIFY(::write(farEnd, bytes, std::strlen(bytes)) > 0);
      QTRY_VERIFY(calls.inputCount(port, waiting) && waiting == std::strlen(bytes));
    };
    arrived("C\rrest");
    calls.discardInput(port);
    QVERIFY(calls.inputCount(port, waiting) && waiting == 0);
    arrived("*\r");
    QVERIFY(calls.close(port));
    ::close(farEnd);
  }

  void usbPortsHaveTheNameOfTheirDevice() {
    const TtestFolder folder;
    using Tcase = std::array<const char*, 3>;
    for (const auto& [maker, product, name] : {Tcase{"FTDI\n", "FT232R USB UART\n", "FTDI FT232R USB UART"},
                                               {"FTDI\n", "FTDI Adapter\n", "FTDI Adapter"},
                                               {"", "Adapter\n", "Adapter"},
                                               {"Linux\n", "", ""}}) {
      std::filesystem::create_directories(folder / "usb1/1-2/1-2:1.0/ttyUSB0");
      writeBytes(folder / "usb1/1-2/manufacturer", maker);
      writeBytes(folder / "usb1/1-2/product", product);
      std::filesystem::create_directories(folder / "tty/ttyUSB0");
      std::filesystem::remove(folder / "tty/ttyUSB0/device");
      std::filesystem::create_directory_symlink("../../usb1/1-2/1-2:1.0/ttyUSB0", folder / "tty/ttyUSB0/device");
      QCOMPARE(usbDeviceName(folder / "tty/ttyUSB0").c_str(), name);
    }
    QVERIFY(usbDeviceName(folder / "tty/ttyS0").empty());
  }
};
EQREC_TEST(TserialCallsTest);

#include "serialCallsTest_posix.moc"
