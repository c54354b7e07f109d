#include <QTcpServer>
#include <QTest>

#include "tools/analyzerProcess.h"
#include "tools/testList.h"
#include "upload/transfer.h"
#include "upload/uploadAdvice.h"

namespace {

class TblindView final : public TtransferView {
 public:
  explicit TblindView(bool cancelled = false) : cancelled_(cancelled) {}
  bool isCancelled() const override { return cancelled_; }
  void showOperation(const char*) override {}
  void showProgress(int) override {}

 private:
  bool cancelled_;
};

TuploadTransport transportBy(TcommMethod method, int serialPort = 1) {
  const std::vector<TuploadEntry> none;
  return transportOf(TuploadCommStruct(method, serialPort, {127, 0, 0, 1}, none));
}

QByteArray adviceOfGreeting(const TuploadTransport& transport) {
  TcommStruct resources;
  const TcommOutcome failure = greet(transport, resources, TblindView(), {250, uploadBlockSize});
  return failure ? QByteArray::fromStdString(failure->advice) : QByteArray("no failure");
}

}  // namespace

/// What the message boxes of an upload say beside their laid-down text.
class TuploadAdviceTest : public QObject {
  Q_OBJECT

 private slots:
  void connectionThatCannotBeOpenedIsNamed() {
    qputenv("QT484_PORTS", "/nowhere");
    QVERIFY(loadStandInDriver());
    qputenv("QT484_USB", "1");  // no one listens there
    QTcpServer closed;
    QVERIFY(closed.listen(QHostAddress::LocalHost));
    TuploadTransport ethernet = transportBy(TcommMethod::ethernet);
    const QByteArray port = QByteArray::number(closed.serverPort());
    std::get<TethernetParameters>(ethernet.parameters).port = port.toInt();
    closed.close();
    const QByteArray refused = adviceOfGreeting(ethernet);
    QVERIFY2(
        refused.startsWith("127.0.0.1 could not be reached on port " + port + ". The system says: Connection refused."),
        refused);
    const QByteArray missing = adviceOfGreeting(transportBy(TcommMethod::serial, 77));
    QVERIFY2(missing.startsWith("COM77 could not be opened. The system says: "), missing);
    QVERIFY(adviceOfGreeting(transportBy(TcommMethod::usb)).startsWith("The USB driver found no analyzer."));
  }

  /// Until the connection is open, nothing has happened that the user must know.
  void cancellingWhileConnectingSaysNothing() {
    TcommStruct resources;
    TblindView view(true);
    const std::vector<std::uint8_t> image(uploadBlockSize);
    const auto result = transferImage(image, transportBy(TcommMethod::ethernet), resources, view, {});
    QVERIFY(!result.completed && !result.message);
    QVERIFY(!resources.isInUse());
  }

  void silenceIsToldFromRefusal() {
    const auto ethernet = transportBy(TcommMethod::ethernet);
    const TcommFailure late(couldNotInitialize, TcommCause::timeOut);
    TuploadReach reach = {TuploadReach::Tstep::opening, 0, 1536, 2000};
    QVERIFY(
        adviceOn(late, ethernet, reach)
            .starts_with("127.0.0.1 did not answer within 2 seconds. Check the address, and that the analyzer is on."));
    reach.step = TuploadReach::Tstep::greeting;
    QVERIFY(adviceOn(late, ethernet, reach).starts_with("127.0.0.1 accepted the connection, but did not answer"));
    QVERIFY(adviceOn(late, transportBy(TcommMethod::serial, 5), reach).starts_with("The analyzer on COM5 did not"));
    const TcommFailure noDriver(couldNotInitialize, TcommCause::noDevice,
                                "open USB device: its driver is not installed");
    QVERIFY(
        adviceOn(noDriver, transportBy(TcommMethod::usb), reach).starts_with("The USB driver (D2XX) is not installed"));
    const TcommFailure cancelled(couldNotInitialize, TcommCause::cancelled);
    QCOMPARE(adviceOn(cancelled, ethernet, reach), std::string());
    reach = {TuploadReach::Tstep::sending, 312, 1536, 2000};
    QCOMPARE(adviceOn(cancelled, ethernet, reach),
             std::string("312 of 1536 blocks had been acknowledged. The analyzer may now hold part of the list. Upload "
                         "again before you use it."));
  }
};
EQREC_TEST(TuploadAdviceTest);

#include "adviceTest.moc"
