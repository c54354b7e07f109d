#include "simulator/testHost.h"

#include <QLibrary>
#include <QTcpSocket>
#include <QTest>

#include "simulator/d2xx/ftd2xx.h"
#include "simulator/serialHost.h"

namespace {

constexpr qsizetype blockSize = 264;

TtestHost openTcp(const QByteArray& port) {
  const auto socket = std::make_shared<QTcpSocket>();
  socket->connectToHost(QStringLiteral("127.0.0.1"), port.toUShort());
  const auto write = [socket](const QByteArray& bytes) {
    const qsizetype count = socket->write(bytes);
    return socket->waitForBytesWritten(patience) ? count : -1;
  };
  const auto read = [socket](qsizetype count) {
    while (socket->bytesAvailable() < count && socket->waitForReadyRead(patience)) continue;
    return socket->read(count);
  };
  return socket->waitForConnected(patience) ? TtestHost{write, read} : TtestHost();
}

/// A function of the driver's library, loaded as a program loads it.
#define DRIVER(function) \
  reinterpret_cast<decltype(&(function))>(QLibrary::resolve(QStringLiteral(QT484_D2XX), #function))

TtestHost openUsb(const QByteArray& port) {
  qputenv("QT484_USB", port);
  FT_HANDLE handle = nullptr;
  FT_HANDLE second = nullptr;
  const auto open = DRIVER(FT_OpenEx);
  const char* name = "Velmora Systems QT484 Plus";
  if (open("another", 2, &second) != FT_DEVICE_NOT_FOUND || open(name, 2, &handle) != FT_OK) return {};
  if (open(name, 2, &second) != FT_DEVICE_NOT_OPENED) return {};
  const std::shared_ptr<void> device(handle, [](FT_HANDLE opened) { DRIVER(FT_Close)(opened); });
  const auto write = [device](const QByteArray& bytes) {
    std::uint32_t written = 0;
    const auto size = static_cast<std::uint32_t>(bytes.size());
    return DRIVER(FT_Write)(device.get(), bytes.constData(), size, &written) == FT_OK ? qsizetype(written) : -1;
  };
  const auto read = [device](qsizetype count) {
    QByteArray bytes(count, '\0');
    std::uint32_t size = 0;
    const auto comes = [&] { return DRIVER(FT_GetQueueStatus)(device.get(), &size) != FT_OK || size >= count; };
    if (!QTest::qWaitFor(comes, patience)) return QByteArray();
    DRIVER(FT_Read)(device.get(), bytes.data(), std::min(size, std::uint32_t(count)), &size);
    return bytes.first(size);
  };
  return {write, read};
}

}  // namespace

TtestHost openHost(const QByteArray& link, const QByteArray& where) {
  return link == "tcp" ? openTcp(where) : link == "usb" ? openUsb(where) : openSerialHost(where);
}

QByteArray imageEntry(const QByteArray& id, int procedure) {
  return id.leftJustified(17, ' ') + '\0' + static_cast<char>(procedure % 256) + static_cast<char>(procedure / 256) +
         "\xFF\xFF";
}

QByteArray imageOf(const QByteArray& entries, int blocks) {
  return entries.leftJustified(blocks * blockSize, '\xFF');
}

QByteArray exchange(const TtestHost& host, const QByteArray& image) {
  if (!host.write) return "not opened";
  const qsizetype last = image.size() / blockSize;
  for (qsizetype i = -1; i <= last; ++i) {
    const QByteArray unit = i < 0 ? "GESI\r" : i == 0 ? "PEQR\r" : image.mid((i - 1) * blockSize, blockSize);
    const qsizetype taken = host.write(unit);
    if (taken != unit.size()) return QByteArray::number(i) + " took " + QByteArray::number(taken);
    const QByteArray answer = host.read(i < 0 ? blockSize : 2);
    const bool isRight = i < 0 ? answer.size() == blockSize : answer == (i == 0 || i == last ? "*\r" : "C\r");
    if (!isRight) return QByteArray::number(i) + " answered " + answer.toHex();
  }
  return "done";
}
