#include <QTest>
#include <thread>

#include "support/log.h"
#include "tools/testList.h"
#include "tools/testPlatform.h"
#include "upload/commandFixture.h"

/// The Upload command from the choice of the connection to the end.
class TuploadCommandTest : public QObject, private TcommandFixture {
  Q_OBJECT
 private slots:
  void initTestCase() { QVERIFY(loadStandInDriver()); }
  void init() { start(); }
  void cleanup() { end(); }

  void theWholeListArrives() {
    TusbAnalyzer analyzer;
    openLog(folder_.path());
    QCOMPARE(upload(connecting), std::optional(QStringLiteral("USB")));
    closeLog();
    const QByteArray log = linesOf(folder_ / "EquipmentRecord.log");
    QVERIFY(log.contains("upload starts: USB, USB device, number of records: 1\n") && !log.contains("A-1"));
    QVERIFY(log.contains("handshake completed after ") && log.contains("transfer completed after "));
    QVERIFY(log.contains("upload completed: USB, number of records: 1\n"));
    QCOMPARE(takeBoxes(), QByteArrayList());
    QCOMPARE(analyzer.waitFor("record 1"), QByteArray("record 1: A-1, procedure 1"));
    QVERIFY(bytesOf(folder_ / "QT484pc.ini").contains("DEFAULTCOMMMETHOD=1"));
  }

  void whatGoesWrongIsOneBoxUnlessCancelled() {
    qputenv("QT484_USB", "1");  // no one listens there
    QVERIFY(!upload(clickIn("TcomSelectFrm", "btnCancel")));
    QCOMPARE(takeBoxes(), QByteArrayList());
    QVERIFY(!upload(connecting));
    QCOMPARE(takeBoxes(), QByteArrayList{"No Deviced Attached.\nOperation Canceled."});
    records_ = TequipRecTable(std::vector<TequipRec>(equipRecLimit));
    append(records_, TequipRec());
    QVERIFY(!upload(connecting));
    QVERIFY(takeBoxes().value(0).startsWith("An internal error occurred"));
  }

  /// The owner goes while the user chooses, and in the greeting and the transfer.
  void theOwnerMayGoInEachStep() {
    upload(whenOpen("TcomSelectFrm", [this](QWidget*) { owner_.reset(); }));
    QVERIFY(!owner_);
    for (const QString& fault : {QStringLiteral("silence@handshake"), QStringLiteral("silence@1")}) {
      owner_ = std::make_unique<QWidget>();
      TusbAnalyzer analyzer(fault);
      const std::jthread watcher([&] {
        analyzer.waitFor("fault");
        QMetaObject::invokeMethod(
            this, [this] { owner_.reset(); }, Qt::QueuedConnection);
      });
      QVERIFY(!upload(connecting) && !owner_);
    }
    QCOMPARE(takeBoxes(), QByteArrayList());
  }

  /// The search for free ports leaves the port to the upload.
  void theChosenPortIsUsed() {
    const TtestFolder ports;
    TanalyzerProcess analyzer({QStringLiteral("--serial"), linkOfPort3(ports)});
    writeBytes(folder_ / "QT484pc.ini", "[COMM]\nDEFAULTCOMMMETHOD=3\nDEFAULTSERIAL=3\n");
    QCOMPARE(upload(connecting), std::optional(QStringLiteral("COM3")));
    QCOMPARE(takeBoxes(), QByteArrayList());
    QCOMPARE(analyzer.waitFor("record 1"), QByteArray("record 1: A-1, procedure 1"));
  }
};
EQREC_TEST(TuploadCommandTest);

#include "commandTest.moc"
