#include <QAbstractEventDispatcher>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include "comm/commStruct.h"
#include "comm/genComm.h"
#include "comm/scriptedCalls.h"
#include "support/failure.h"
#include "tools/testList.h"

namespace {

const TcommParameters serialParameters = [] {
  TserialParameters parameters;
  std::copy_n("COM5", 5, parameters.portName.begin());
  return parameters;
}();

TcommParameters addressOf(int port, unsigned timeOut = 0) {
  return TethernetParameters{port, {127, 0, 0, 1}, timeOut};
}

/// The name of the exception that the work throws.
template <typename Twork>
QByteArray thrownBy(Twork work) try {
  work();
  return "nothing";
} catch (const TcommTimeoutException&) {
  return "time-out";
} catch (const TnoDeviceAttachedException&) {
  return "no device";
} catch (const TinitializationException&) {
  return "initialization";
} catch (const TuninitializedCommModeException&) {
  return "uninitialized";
} catch (const ToperationCancelledException&) {
  return "cancelled";
} catch (const std::exception& error) {
  return error.what();
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
  QByteArrayList boxes_;

  TDataCommClass::TshowBox recorder() {
    return [this](const TmessageText& message) { boxes_ << message.text; };
  }

 private slots:
  void init() {
    serial_ = {};
    usb_ = {};
    boxes_.clear();
  }

  void openingAPortThatFailsClosesItOnce_data() {
    QTest::addColumn<QByteArray>("failing");
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("closes");
    QTest::newRow("no port") << QByteArray("open") << QByteArray("8") << QByteArray("Open Error!") << 0;
    QTest::newRow("state not told") << QByteArray("getState") << QByteArray("14") << QByteArray("Get Comm State Error!")
                                    << 1;
    QTest::newRow("state not taken") << QByteArray("setState") << QByteArray("15")
                                     << QByteArray("Set Comm State Error!") << 1;
    QTest::newRow("no queues") << QByteArray("setQueues") << QByteArray("16") << QByteArray("Setup Comm Error!") << 1;
    QTest::newRow("no times") << QByteArray("setTimeouts") << QByteArray("17") << QByteArray("Set Comm Timeouts Error!")
                              << 1;
  }
  void openingAPortThatFailsClosesItOnce() {
    QFETCH(QByteArray, failing);
    QFETCH(int, closes);
    serial_.failing = failing;
    TCommPort port(serial_);
    QTEST(codeOf([&] { port.open(); }), "code");
    QVERIFY(!port.isOpen());
    TcommStruct resources({serial_, usb_});
    TDataCommClass channel(&resources, TcommMode::serial, 100, 264, &serialParameters, false, recorder());
    QCOMPARE(thrownBy([&] { channel.open(); }), QByteArray("initialization"));
    QTEST(boxes_.join('|'), "text");
    QVERIFY(!resources.isInUse());
    QCOMPARE(serial_.calls.count("close"), 2 * closes);
  }

  void changesOfAnOpenPortTakeEffectAtOnceOrNotAtAll() {
    TCommPort port(serial_);
    QCOMPARE(codeOf([&] { port.bytesWaiting(); }), QByteArray("7"));
    port.setName("COM12");
    port.setBaudRate(19200);
    port.open();
    QCOMPARE(serial_.calls,
             QByteArrayList({"inputCount", "open COM12", "getState", "setState", "setQueues 32768 9216", "setTimeouts"})
                 .mid(1));
    QCOMPARE(serial_.set.baudRate, 19200U);
    QCOMPARE(codeOf([&] { port.setName("COM1"); }), QByteArray("6"));
    serial_.failing = "setState";
    QCOMPARE(codeOf([&] { port.setBaudRate(1); }), QByteArray("1"));
    QCOMPARE(codeOf([&] { port.setByteSize(1); }), QByteArray("5"));
    QCOMPARE(codeOf([&] { port.setParity(1); }), QByteArray("4"));
    QCOMPARE(codeOf([&] { port.setStopBits(1); }), QByteArray("3"));
    serial_.failing.clear();
    port.setParity(2);
    const TserialState expected = {19200, 8, 2, 0};
    QCOMPARE(std::tie(serial_.set.baudRate, serial_.set.byteSize, serial_.set.parity, serial_.set.stopBits),
             std::tie(expected.baudRate, expected.byteSize, expected.parity, expected.stopBits));
    serial_.transfer = 2;
    std::string buffer = "....";
    QCOMPARE(port.read(buffer), 2U);
    QCOMPARE(buffer, std::string("rr\0.", 4));
    for (const auto& [failing, code] :
         {std::pair("read", "10"), std::pair("write", "9"), std::pair("inputCount", "18"), std::pair("close", "11")}) {
      serial_.failing = failing;
      const auto work = [&, failing = QByteArray(failing)] {
        if (failing == "read") port.read(buffer);
        if (failing == "write") port.write(buffer);
        if (failing == "inputCount") port.bytesWaiting();
        if (failing == "close") port.close();
      };
      QCOMPARE(codeOf(work), QByteArray(code));
    }
    QVERIFY(!port.isOpen());
  }

  void aChannelClosesItsDeviceOnce() {
    for (const TcommMode mode : {TcommMode::serial, TcommMode::usb}) {
      TcommStruct resources({serial_, usb_});
      const TcommParameters& parameters = mode == TcommMode::serial ? serialParameters : usbParameters;
      serial_.transfer = usb_.transfer = 1000;
      {
        TDataCommClass channel(&resources, mode, 100, 264, &parameters, false, recorder());
        QCOMPARE(channel.open(), 0);
        QVERIFY(resources.isInUse());
        QCOMPARE(channel.write("12", 2), 0);
        QCOMPARE(channel.write("12", 0), -2);
        QCOMPARE(channel.read(nullptr, 2), -2);
        serial_.transfer = usb_.transfer = 1;
        QCOMPARE(channel.write("12", 2), -1);
        channel.close();
        QCOMPARE(thrownBy([&] { channel.close(); }), QByteArray("uninitialized"));
        QCOMPARE(thrownBy([&] { channel.bytesWaiting(); }), QByteArray("uninitialized"));
      }
      QVERIFY(!resources.isInUse());
    }
    QCOMPARE(serial_.calls.count("close"), 1);
    QCOMPARE(usb_.calls, QByteArrayList({"open Velmora Systems QT484 Plus 2", "write", "write", "close"}));
    QCOMPARE(boxes_, QByteArrayList());
  }

  void openingAgainLeavesNoUsbDeviceOpen() {
    for (const bool secondFails : {false, true}) {
      TcommStruct resources({serial_, usb_});
      usb_ = {};
      TDataCommClass channel(&resources, TcommMode::usb, 100, 264, &usbParameters, true);
      channel.open();
      usb_.failing = secondFails ? "open" : "";
      QCOMPARE(thrownBy([&] { channel.openAgain(); }), QByteArray(secondFails ? "no device" : "nothing"));
      QCOMPARE(usb_.calls.at(1), QByteArray("close"));
      if (!secondFails) channel.close();
      QCOMPARE(usb_.calls.count("close"), secondFails ? 1 : 2);
      QVERIFY(!resources.isInUse());
    }
  }

  void aDeviceThatIsNotThereIsOneBoxUnlessSilent() {
    usb_.failing = "open";
    for (const bool silent : {true, false}) {
      TcommStruct resources({serial_, usb_});
      TDataCommClass channel(&resources, TcommMode::usb, 100, 264, &usbParameters, silent, recorder());
      QCOMPARE(thrownBy([&] { channel.open(); }), QByteArray("no device"));
      QCOMPARE(boxes_.size(), silent ? 0 : 1);
    }
    QCOMPARE(boxes_.first(), QByteArray("Device Not Detected.\nPlease check connection.\n\nOperation Canceled."));
    QCOMPARE(usb_.calls, QByteArrayList({"open Velmora Systems QT484 Plus 2", "open Velmora Systems Qt484 Final 2"}) +
                             usb_.calls.first(2));
    usb_.failing = "queue";
    TcommStruct resources({serial_, usb_});
    TDataCommClass channel(&resources, TcommMode::usb, 100, 264, &usbParameters, false, recorder());
    channel.open();
    QCOMPARE(thrownBy([&] { channel.bytesWaiting(); }), QByteArray("no device"));
  }

  void aFailureSaysWhatFailedAndWhy() {
    TcommStruct resources({serial_, usb_});
    const auto reason = [&](TcommMode mode, const TcommParameters& parameters) -> QByteArray {
      TDataCommClass channel(&resources, mode, 100, 264, &parameters, true);
      try {
        channel.open();
        channel.write("12345", 5);
        return channel.failure().c_str();
      } catch (const TcommException& error) {
        return error.reason().c_str();
      }
    };
    serial_.failing = usb_.failing = "open";
    QCOMPARE(reason(TcommMode::serial, serialParameters), ("open COM5: " + systemErrorText(1002)).c_str());
    QCOMPARE(reason(TcommMode::usb, usbParameters),
             QByteArray("open USB device: driver status 4 for Velmora Systems QT484 Plus, driver status 4 for Velmora "
                        "Systems Qt484 Final"));
    serial_.failing = usb_.failing = "write";
    QVERIFY(reason(TcommMode::serial, serialParameters).startsWith("write COM5: "));
    QCOMPARE(reason(TcommMode::usb, usbParameters), QByteArray("write USB device: driver status 4"));
    serial_.failing.clear();
    serial_.transfer = 2;
    QCOMPARE(reason(TcommMode::serial, serialParameters), QByteArray("write COM5: 2 of 5 bytes"));
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    const int port = server.serverPort();
    server.close();
    QCOMPARE(reason(TcommMode::ethernet, addressOf(port)),
             "connect to 127.0.0.1:" + QByteArray::number(port) + ": Connection refused");
  }

  void theHolderHasOneSlotInUse() {
    TcommStruct resources({serial_, usb_});
    QCOMPARE(resources.close(), -1);
    QVERIFY(!resources.open(4) && !resources.isInUse());
    QVERIFY(resources.open(TcommStruct::serialKind) && resources.serial());
    QVERIFY(!resources.open(TcommStruct::ethernetKind) && !resources.ethernet());
    TDataCommClass second(&resources, TcommMode::serial, 100, 264, &serialParameters, false, recorder());
    QCOMPARE(thrownBy([&] { second.open(); }), QByteArray("initialization"));
    QCOMPARE(boxes_, QByteArrayList{"An Serial connection could not be found.\nOperation Canceled."});
    QVERIFY(resources.open(TcommStruct::usbKind));
    TDataCommClass usb(&resources, TcommMode::usb, 100, 264, &usbParameters, false, recorder());
    QCOMPARE(usb.open(), 0);  // empties the slots and asks again
    for (const auto mode : {TcommMode::none, TcommMode::usb}) {
      QCOMPARE(thrownBy([&] { TDataCommClass(&resources, mode, 100, 264, nullptr, true); }),
               QByteArray("uninitialized"));
    }
  }

  void connectingEndsAsWhatItIs() {
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    const int port = server.serverPort();
    TcommStruct resources({serial_, usb_});
    QElapsedTimer timer;
    const auto heldByApplication = QAbstractEventDispatcher::instance()->children();
    {
      const TcommParameters address = addressOf(port);
      TDataCommClass channel(&resources, TcommMode::ethernet, 5, 264, &address, true);
      QCOMPARE(channel.open(), 0);  // waits for at least one pass
      QCOMPARE(channel.connectionState(), TcommState::connected);
      QCOMPARE(resources.ethernet()->socketOption(QAbstractSocket::LowDelayOption).toInt(), 1);
    }
    // Nothing of the module may stay with the application, which may outlive it.
    QCOMPARE(QAbstractEventDispatcher::instance()->children(), heldByApplication);
    server.close();
    const TcommParameters refused = addressOf(port, 5000);
    TDataCommClass channel(&resources, TcommMode::ethernet, 100, 264, &refused, false, recorder());
    timer.start();
    QCOMPARE(thrownBy([&] { channel.open(); }), QByteArray("initialization"));
    QVERIFY(timer.elapsed() < 2000);
    QCOMPARE(boxes_, QByteArrayList{"An error occurred while attempting to connect.\rOperation Canceled."});
    QVERIFY(!resources.isInUse());
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
    TcommStruct resources({serial_, usb_});
    TDataCommClass channel(&resources, TcommMode::ethernet, 95, 264, &address, true);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(thrownBy([&] { channel.open(); }), QByteArray("time-out"));
    QVERIFY(timer.elapsed() >= 95);
    QVERIFY(!resources.isInUse());
    TcancelledChannel cancelled(&resources, TcommMode::ethernet, 5000, 264, &address, true);
    QCOMPARE(thrownBy([&] { cancelled.open(); }), QByteArray("cancelled"));
    QVERIFY(timer.elapsed() < 1000);
  }
};
EQREC_TEST(TchannelTest);

#include "channelTest.moc"
