#include <QAbstractEventDispatcher>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include "comm/commStruct.h"
#include "comm/commandLayer.h"
#include "comm/genComm.h"
#include "comm/scriptedCalls.h"
#include "support/failure.h"
#include "tools/testList.h"

namespace {

const TcommParameters serialParameters = TserialParameters{{"COM5"}};

TcommParameters addressOf(int port, unsigned timeOut = 0) {
  return TethernetParameters{port, {127, 0, 0, 1}, timeOut};
}

class TcancelledChannel : public TDataCommClass {
 public:
  using TDataCommClass::TDataCommClass;
  bool cancelRequested() override { return true; }
};

QByteArray codeOf(const std::function<void()>& work) try {
  work();
  return "none";
} catch (const ECommError& error) {
  return QByteArray::number(error.code()) + (error.systemError() > 1000 ? "" : " without the system's error");
}

}  // namespace

/// Opens, uses and closes a channel over each transport, with every failure.
class TchannelTest : public QObject {
  Q_OBJECT

 private:
  TscriptedSerial serial_;
  TscriptedUsb usb_;
  TcommStruct resources_{{serial_, usb_}};
  int boxes_ = 0;

  TDataCommClass channelOver(TcommMode mode, const TcommParameters& parameters, bool silent = false) {
    const auto showBox = [this](const TmessageText&) { ++boxes_; };
    return {&resources_, mode, 100, 264, &parameters, silent, showBox};
  }

  /// The reason why opening or writing fails.
  QByteArray reason(TcommMode mode, const TcommParameters& parameters) {
    TDataCommClass channel = channelOver(mode, parameters, true);
    try {
      channel.open();
      channel.write("12345", 5);
      return channel.failure().c_str();
    } catch (const TcommException& error) {
      return error.reason().c_str();
    }
  }

 private slots:
  void init() {
    resources_.reset();
    serial_ = {};
    usb_ = {};
    boxes_ = 0;
  }

  void openingAPortThatFailsClosesItOnce() {
    using Tcase = std::array<const char*, 2>;
    for (const auto& [failing, code] :
         {Tcase{"open", "8"}, {"getState", "14"}, {"setState", "15"}, {"setQueues", "16"}, {"setTimeouts", "17"}}) {
      init();
      serial_.failing = failing;
      TCommPort port(serial_);
      QCOMPARE(codeOf([&] { port.open(); }), code);
      QVERIFY(!port.isOpen());
      TDataCommClass channel = channelOver(TcommMode::serial, serialParameters);
      QVERIFY_THROWS_EXCEPTION(TinitializationException, channel.open());
      QCOMPARE(boxes_, 1);
      QVERIFY(!resources_.isInUse());
      QCOMPARE(serial_.calls.count("close"), serial_.failing == "open" ? 0 : 2);
    }
  }

  void changesOfAnOpenPortTakeEffectAtOnceOrNotAtAll() {
    TCommPort port(serial_);
    QCOMPARE(codeOf([&] { port.bytesWaiting(); }), "7");
    port.setName("COM12");
    port.setBaudRate(19200);
    port.open();
    QCOMPARE(serial_.calls,
             QByteArrayList({"open COM12", "getState", "setState", "setQueues 32768 9216", "setTimeouts"}));
    QCOMPARE(serial_.set.baudRate, 19200U);
    QCOMPARE(codeOf([&] { port.setName("COM1"); }), "6");
    serial_.failing = "setState";
    QCOMPARE(codeOf([&] { port.setBaudRate(1); }), "1");
    QCOMPARE(codeOf([&] { port.setByteSize(1); }), "5");
    QCOMPARE(codeOf([&] { port.setParity(1); }), "4");
    QCOMPARE(codeOf([&] { port.setStopBits(1); }), "3");
    serial_.failing.clear();
    port.setParity(2);
    const auto& [baudRate, byteSize, parity, stopBits] = serial_.set;
    QVERIFY(baudRate == 19200 && byteSize == 8 && parity == 2 && stopBits == 0);
    serial_.transfer = 2;
    std::string buffer = "....";
    QCOMPARE(port.read(buffer), 2U);
    QCOMPARE(buffer, std::string("rr\0.", 4));
    using Tcall = std::tuple<const char*, const char*, std::function<void()>>;
    for (const auto& [failing, code, call] :
         {Tcall("read", "10", [&] { port.read(buffer); }), Tcall("write", "9", [&] { port.write(buffer); }),
          Tcall("inputCount", "18", [&] { port.bytesWaiting(); }), Tcall("close", "11", [&] { port.close(); })}) {
      serial_.failing = failing;
      QCOMPARE(codeOf(call), code);
    }
    QVERIFY(!port.isOpen());
  }

  void aCommandFindsAnEmptyLine() {
    std::array<char, 264> block{};
    using Tcase = std::pair<TcommMode, bool>;
    for (const auto& [mode, asks] : {Tcase(TcommMode::serial, false), Tcase(TcommMode::serial, true),
                                     Tcase(TcommMode::usb, false), Tcase(TcommMode::usb, true)}) {
      TDataCommClass channel = channelOver(mode, mode == TcommMode::serial ? serialParameters : usbParameters);
      VMRcommClass analyzer(&channel);
      analyzer.open();
      serial_.calls.clear();
      usb_.calls.clear();
      asks ? analyzer.getData(handshakeCommand, commandLength, block.data(), 1)
           : analyzer.putData(putRecordsCommand, commandLength, block.data(), 1);
      if (mode == TcommMode::serial) QCOMPARE(serial_.calls.first(2), QByteArrayList({"discard", "write"}));
      if (mode == TcommMode::usb) QCOMPARE(usb_.calls.first(2), QByteArrayList({"purge 1", "write"}));
    }
  }

  void aChannelClosesItsDeviceOnce() {
    for (const TcommMode mode : {TcommMode::serial, TcommMode::usb}) {
      const TcommParameters& parameters = mode == TcommMode::serial ? serialParameters : usbParameters;
      serial_.transfer = usb_.transfer = 1000;
      {
        TDataCommClass channel = channelOver(mode, parameters);
        QCOMPARE(channel.open(), 0);
        QVERIFY(resources_.isInUse());
        QCOMPARE(channel.write("12", 2), 0);
        QCOMPARE(channel.write("12", 0), -2);
        QCOMPARE(channel.read(nullptr, 2), -2);
        serial_.transfer = usb_.transfer = 1;
        QCOMPARE(channel.write("12", 2), -1);
        channel.close();
        QVERIFY_THROWS_EXCEPTION(TuninitializedCommModeException, channel.close());
        QVERIFY_THROWS_EXCEPTION(TuninitializedCommModeException, channel.bytesWaiting());
      }
      QVERIFY(!resources_.isInUse());
    }
    QCOMPARE(serial_.calls.count("close"), 1);
    QCOMPARE(usb_.calls, QByteArrayList({"open Velmora Systems QT484 Plus 2", "timeouts", "write", "write", "close"}));
    QCOMPARE(boxes_, 0);
  }

  void openingAgainLeavesNoUsbDeviceOpen() {
    TDataCommClass channel = channelOver(TcommMode::usb, usbParameters);
    channel.open();
    channel.openAgain();
    usb_.failing = "open";
    QVERIFY_THROWS_EXCEPTION(TnoDeviceAttachedException, channel.openAgain());
    const QByteArray open = usb_.calls.first();
    usb_.calls.removeAll("timeouts");
    QCOMPARE(usb_.calls.first(5), QByteArrayList({open, "close", open, "close", open}));
    QVERIFY(!usb_.calls.mid(5).contains("close") && !resources_.isInUse());
  }

  void aDeviceThatIsNotThereIsOneBoxUnlessSilent() {
    usb_.failing = "open";
    for (const bool silent : {true, false}) {
      TDataCommClass channel = channelOver(TcommMode::usb, usbParameters, silent);
      QVERIFY_THROWS_EXCEPTION(TnoDeviceAttachedException, channel.open());
      QCOMPARE(boxes_, silent ? 0 : 1);
    }
    QCOMPARE(usb_.calls, QByteArrayList({"open Velmora Systems QT484 Plus 2", "open Velmora Systems Qt484 Final 2"}) +
                             usb_.calls.first(2));
    usb_.failing = "queue";
    TDataCommClass channel = channelOver(TcommMode::usb, usbParameters);
    channel.open();
    QVERIFY_THROWS_EXCEPTION(TnoDeviceAttachedException, channel.bytesWaiting());
  }

  void aFailureSaysWhatFailedAndWhy() {
    serial_.failing = usb_.failing = "open";
    QCOMPARE(reason(TcommMode::serial, serialParameters), ("open COM5: " + systemErrorText(1002)).c_str());
    QCOMPARE(reason(TcommMode::usb, usbParameters),
             QByteArray("open USB device: driver status 4 for Velmora Systems QT484 Plus, driver status 4 for Velmora "
                        "Systems Qt484 Final"));
    serial_.failing = usb_.failing = "write";
    QVERIFY(reason(TcommMode::serial, serialParameters).startsWith("write COM5: "));
    QCOMPARE(reason(TcommMode::usb, usbParameters), "write USB device: driver status 4");
    serial_.failing.clear();
    serial_.transfer = 2;
    QCOMPARE(reason(TcommMode::serial, serialParameters), "write COM5: 2 of 5 bytes");
  }

  void theHolderHasOneSlotInUse() {
    QCOMPARE(resources_.close(), -1);
    QVERIFY(!resources_.open(4) && !resources_.isInUse());
    QVERIFY(resources_.open(TcommStruct::serialKind) && resources_.serial());
    QVERIFY(!resources_.open(TcommStruct::ethernetKind) && !resources_.ethernet());
    TDataCommClass second = channelOver(TcommMode::serial, serialParameters);
    QVERIFY_THROWS_EXCEPTION(TinitializationException, second.open());
    QCOMPARE(boxes_, 1);
    QVERIFY(resources_.open(TcommStruct::usbKind));
    TDataCommClass usb = channelOver(TcommMode::usb, usbParameters);
    QCOMPARE(usb.open(), 0);  // empties the slots and asks again
    for (const auto mode : {TcommMode::none, TcommMode::usb}) {
      QVERIFY_THROWS_EXCEPTION(TuninitializedCommModeException,
                               TDataCommClass(&resources_, mode, 100, 264, nullptr, true));
    }
  }

  void connectingEndsAsWhatItIs() {
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    const int port = server.serverPort();
    const auto heldByApplication = QAbstractEventDispatcher::instance()->children();
    {
      const TcommParameters address = addressOf(port);
      TDataCommClass channel(&resources_, TcommMode::ethernet, 5, 264, &address, true);
      QCOMPARE(channel.open(), 0);  // waits for at least one pass
      QCOMPARE(channel.connectionState(), TcommState::connected);
      QCOMPARE(resources_.ethernet()->socketOption(QAbstractSocket::LowDelayOption).toInt(), 1);
    }
    // Nothing of the module may stay with the application, which may outlive it.
    QCOMPARE(QAbstractEventDispatcher::instance()->children(), heldByApplication);
    server.close();
    const TcommParameters refused = addressOf(port, 5000);
    TDataCommClass channel = channelOver(TcommMode::ethernet, refused);
    QElapsedTimer timer;
    timer.start();
    QVERIFY_THROWS_EXCEPTION(TinitializationException, channel.open());
    QVERIFY(timer.elapsed() < 2000);
    QCOMPARE(reason(TcommMode::ethernet, refused),
             "connect to 127.0.0.1:" + QByteArray::number(port) + ": Connection refused");
    QCOMPARE(boxes_, 1);
    QVERIFY(!resources_.isInUse());
  }

  /// A peer whose connection queue is full does not answer at all.
  void aConnectionWithoutAnAnswerTimesOut() {
    QTcpServer server;
    server.setListenBacklogSize(1);
    QVERIFY(server.listen(QHostAddress::LocalHost));
    server.pauseAccepting();
    std::vector<std::unique_ptr<QTcpSocket>> fillers;
    bool full = false;
    while (!full && fillers.size() < 20) {
      fillers.push_back(std::make_unique<QTcpSocket>());
      fillers.back()->connectToHost(QHostAddress::LocalHost, server.serverPort());
      full = !fillers.back()->waitForConnected(300);
    }
    if (!full) QSKIP("this system takes connections beyond its queue");
    const TcommParameters address = addressOf(server.serverPort());
    TDataCommClass channel(&resources_, TcommMode::ethernet, 95, 264, &address, true);
    QElapsedTimer timer;
    timer.start();
    QVERIFY_THROWS_EXCEPTION(TcommTimeoutException, channel.open());
    QVERIFY(timer.elapsed() >= 95);
    QVERIFY(!resources_.isInUse());
    TcancelledChannel cancelled(&resources_, TcommMode::ethernet, 5000, 264, &address, true);
    QVERIFY_THROWS_EXCEPTION(ToperationCancelledException, cancelled.open());
    QVERIFY(timer.elapsed() < 1000);
  }
};
EQREC_TEST(TchannelTest);

#include "channelTest.moc"
