#include <QTemporaryDir>
#include <QThread>
#include <arpa/inet.h>
#include <ctime>
#include <functional>
#include <memory>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include "bench/rows.h"
#include "tools/analyzerProcess.h"
#include "upload/transfer.h"

namespace {

constexpr int lineRate = 19200;  // baud, 10 bits a byte
constexpr int usbLatency = 16;   // milliseconds
constexpr int pacedBlocks = 24;  // of 1536; all of them would take 64 times as long

class TblindView final : public TtransferView {
 public:
  bool isCancelled() const override { return false; }
  void showOperation(const char*) override {}
  void showProgress(int) override {}
};

std::vector<std::uint8_t> imageOf(std::size_t blocks) {
  std::vector<std::uint8_t> image;
  image.resize(blocks * uploadBlockSize, 0xFF);
  return image;
}

using Tmeter = double (*)(const std::function<void()>& work);

/// The processor time of this thread, in milliseconds.
double processorTimeOf(const std::function<void()>& work) {
  const auto now = [] {
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
  };
  const double start = now();
  work();
  return now() - start;
}

/// On a worker thread, as in the plug-in.
double upload(const TuploadTransport& transport, std::size_t blocks, Tmeter timeOf = millisecondsOf) {
  TcommStruct resources;
  TblindView view;
  const auto image = imageOf(blocks);
  TtransferResult result;
  double time = 0;
  const std::unique_ptr<QThread> worker(
      QThread::create([&] { time = timeOf([&] { result = transferImage(image, transport, resources, view, {}); }); }));
  worker->start();
  worker->wait();
  require(result.completed, result.message ? result.message->text : "an upload was cancelled");
  return time;
}

TuploadTransport transportBy(TcommMethod method) {
  const std::vector<TuploadEntry> none;
  return transportOf(TuploadCommStruct(method, 1, {127, 0, 0, 1}, none));
}

void exchange(int socket, const void* bytes, std::size_t count) {
  require(send(socket, bytes, count, MSG_NOSIGNAL) == static_cast<ssize_t>(count), "a block was not sent");
  std::array<char, 2> answer{};
  require(recv(socket, answer.data(), answer.size(), MSG_WAITALL) == 2, "a block was not acknowledged");
}

/// The same exchange with blocking socket calls only.
double uploadBlocking(int port, Tmeter timeOf) {
  const auto image = imageOf(uploadBlockCount);
  return timeOf([&] {
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    require(connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0, "not connected");
    const int on = 1;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    exchange(socket, "PEQR\r", 5);
    for (std::size_t block = 0; block < uploadBlockCount; ++block) {
      exchange(socket, image.data() + block * uploadBlockSize, uploadBlockSize);
    }
    close(socket);
  });
}

Tsides overTcp(Tmeter timeOf) {
  const auto analyzer = std::make_shared<TanalyzerProcess>(QStringList{QStringLiteral("--tcp"), QStringLiteral("0")});
  TuploadTransport transport = transportBy(TcommMethod::ethernet);
  std::get<TethernetParameters>(transport.parameters).port = analyzer->port();
  return {[analyzer, transport, timeOf] { return upload(transport, uploadBlockCount, timeOf); },
          [analyzer, timeOf] { return uploadBlocking(analyzer->port(), timeOf); }};
}

/// The pure transmission time of an upload at the analyzer's line rate.
double wireTime() {
  constexpr double bits = 10.0 * (5 + 2 + pacedBlocks * (uploadBlockSize + 2));
  return bits / lineRate * 1000;
}

QStringList paced(const QStringList& link) {
  return link + QStringList{QStringLiteral("--baud"), QString::number(lineRate), QStringLiteral("--blocks"),
                            QString::number(pacedBlocks)};
}

Tsides overSerialPort() {
  const auto ports = std::make_shared<QTemporaryDir>();
  qputenv("QT484_PORTS", ports->path().toUtf8());
  const auto analyzer =
      std::make_shared<TanalyzerProcess>(paced({QStringLiteral("--serial"), ports->filePath(QStringLiteral("com1"))}));
  return {[analyzer, ports] { return upload(transportBy(TcommMethod::serial), pacedBlocks); }, wireTime};
}

Tsides overUsb(const QStringList& options, double (*yardstick)()) {
  require(loadStandInDriver(), "the stand-in driver is missing");
  const auto analyzer = std::make_shared<TanalyzerProcess>(options);
  qputenv("QT484_USB", QByteArray::number(analyzer->port()));
  return {[analyzer] { return upload(transportBy(TcommMethod::usb), pacedBlocks); }, yardstick};
}

const QStringList usbLink = {QStringLiteral("--usb"), QStringLiteral("0")};

Tsides overPacedUsb() {
  return overUsb(paced(usbLink), wireTime);
}

/// The chip of a USB cable holds each answer back.
Tsides overSlowUsb() {
  const QStringList options = {QStringLiteral("--latency"), QString::number(usbLatency), QStringLiteral("--blocks"),
                               QString::number(pacedBlocks)};
  return overUsb(usbLink + options, [] { return double((pacedBlocks + 1) * usbLatency); });
}

}  // namespace

std::vector<Trow> uploadRows(const TbenchFolders&) {
  return {{"upload-tcp", "ms", 1.3, 11, [] { return overTcp(millisecondsOf); }},
          {"upload-tcp-processor", "ms", 2.0, 11, [] { return overTcp(processorTimeOf); }},
          {"upload-serial", "ms", 1.02, 3, overSerialPort},
          {"upload-usb", "ms", 1.02, 3, overPacedUsb},
          {"upload-usb-latency", "ms", 1.2, 3, overSlowUsb}};
}
