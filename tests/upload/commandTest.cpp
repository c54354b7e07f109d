#include <QTest>
#include <thread>

#include "store/datastructs.h"
#include "support/iniFile.h"
#include "support/log.h"
#include "support/messageBox.h"
#include "tools/analyzerProcess.h"
#include "tools/dialogs.h"
#include "tools/messageRecorder.h"
#include "tools/recordChanges.h"
#include "tools/testFiles.h"
#include "tools/testList.h"
#include "upload/lineRest.h"
#include "upload/uploadCommand.h"

/// The Upload command from the choice of the connection to the end.
class TuploadCommandTest : public QObject {
  Q_OBJECT

 private:
  TtestFolder folder_;
  const TiniFile settings_{folder_ / "QT484pc.ini"};
  TmessageRecorder messages_;
  std::unique_ptr<QWidget> owner_;
  TequipRecTable records_;
  std::optional<QString> place_;

  void upload(const TdialogSteps& choice = clickIn("TcomSelectFrm", "btnConnect")) {
    choice.during([this] { place_ = uploadRecords(owner_.get(), records_, settings_); });
  }

 private slots:
  void initTestCase() { QVERIFY(loadStandInDriver()); }
  void init() {
    forgetBrokenOff();
    owner_ = std::make_unique<QWidget>();
    append(records_, makeRecord({"A-1"}));
  }
  void cleanup() { records_ = {}; }

  void theWholeListArrives() {
    TusbAnalyzer analyzer;
    openLog(folder_.path());
    upload();
    closeLog();
    const QByteArray log = linesOf(folder_ / "EquipmentRecord.log");
    QVERIFY(log.contains("upload starts: USB, USB device, number of records: 1\n") && !log.contains("A-1"));
    QVERIFY(log.contains("handshake completed after ") && log.contains("transfer completed after "));
    QVERIFY(log.contains("upload completed: USB, number of records: 1\n"));
    QCOMPARE(place_, std::optional(QStringLiteral("USB")));
    QCOMPARE(messages_.takeCaptions(), QByteArrayList());
    QCOMPARE(analyzer.waitFor("record 1"), QByteArray("record 1: A-1, procedure 1"));
    QVERIFY(bytesOf(folder_ / "QT484pc.ini").contains("DEFAULTCOMMMETHOD=1"));
  }

  void whatGoesWrongIsOneBoxUnlessCancelled() {
    qputenv("QT484_USB", "1");  // no one listens there
    upload(clickIn("TcomSelectFrm", "btnCancel"));
    QCOMPARE(messages_.takeCaptions(), QByteArrayList());
    upload();
    QCOMPARE(messages_.takeCaptions(), QByteArrayList{"Error"});
    QVERIFY(!place_);
    records_ = TequipRecTable(std::vector<TequipRec>(equipRecLimit));
    upload();
    QCOMPARE(messages_.takeCaptions(), QByteArrayList{"Error"});
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
      upload();
      QVERIFY(!owner_);
    }
    QCOMPARE(messages_.takeCaptions(), QByteArrayList());
  }
};
EQREC_TEST(TuploadCommandTest);

#include "commandTest.moc"
