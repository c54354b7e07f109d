#include <QTest>

#include "comm/commStruct.h"
#include "support/messageBox.h"
#include "tools/analyzerProcess.h"
#include "tools/dialogs.h"
#include "tools/testList.h"
#include "tools/testPlatform.h"
#include "upload/progress.h"
#include "upload/timeLeft.h"
#include "upload/uploadImage.h"

/// The progress dialog and its worker thread, connected to the simulated analyzer by the stand-in driver.
class TprogressTest : public QObject {
  Q_OBJECT

 private:
  const std::vector<TuploadEntry> entries_ = {makeUploadEntry("A-1", 1)};
  const TuploadCommStruct upload_ = TuploadCommStruct(TcommMethod::usb, 1, {}, entries_);
  TcommStruct resources_;
  QByteArrayList boxes_;
  QThread* boxThread_ = nullptr;

  /// Runs an upload as the command does.
  int run(TfrmProgress& dialog) {
    const int result = dialog.exec();
    dialog.awaitWorker();
    return result;
  }

 private slots:
  void initTestCase() { QVERIFY(loadStandInDriver()); }
  void init() {
    boxes_.clear();
    replaceMessageBox([this](QWidget*, const TmessageText& message, auto, const QString&) {
      boxes_ << QByteArray(message.caption) + ": " + message.text;
      boxThread_ = QThread::currentThread();
      return QMessageBox::Ok;
    });
  }
  void cleanup() { replaceMessageBox({}); }

  void manyUploadsLeaveNothingBehind() {
    TusbAnalyzer analyzer;
    const auto once = [this] {
      TfrmProgress dialog(&upload_, &resources_, nullptr);
      return run(dialog);
    };
    for (int i = 0; i < 2; ++i) QCOMPARE(once(), int(QDialog::Accepted));
    const auto handles = openHandles();
    for (int i = 0; i < 2; ++i) QCOMPARE(once(), int(QDialog::Accepted));
    QTRY_VERIFY(openHandles() <= handles);
    QCOMPARE(boxes_, QByteArrayList());
    QCOMPARE(analyzer.waitFor("record 1"), QByteArray("record 1: A-1, procedure 1"));
  }

  void timeLeftFollowsTheBlocks() {
    using namespace std::chrono_literals;
    const TtimeLeft::Ttime start;
    TtimeLeft left;
    left.note(50, start);
    QCOMPARE(left.text(start + 60s), QString());
    left.note(30, start + 1s);  // the command: only now the blocks begin
    left.note(51, start + 5s);
    QCOMPARE(left.text(start + 5s), QString());
    QCOMPARE(left.text(start + 6s), QStringLiteral("about 3 min left"));
    left.note(60, start + 41s);
    QCOMPARE(left.text(start + 41s), QStringLiteral("about 2 min left"));
    QCOMPARE(left.text(start + 77s), QStringLiteral("about 85 s left"));
    QCOMPARE(left.text(start + 200s), QStringLiteral("about 5 s left"));
  }

  void aFailureIsOneBoxOfTheUserInterfaceThread() {
    TusbAnalyzer analyzer(QStringLiteral("wrong@700"));
    TfrmProgress dialog(&upload_, &resources_, nullptr);
    QCOMPARE(run(dialog), int(QDialog::Rejected));
    QCOMPARE(boxes_, QByteArrayList{"Error: Could not establish communications with analyzer.\nOperation Canceled."});
    QCOMPARE(boxThread_, thread());
  }

  void cancelAndEscapeEndItWithOneBox() {
    for (const bool byKey : {false, true}) {
      boxes_.clear();
      TusbAnalyzer analyzer(QStringLiteral("silence@700"));
      TfrmProgress dialog(&upload_, &resources_, nullptr);
      whenOpen("TfrmProgress", [&](QWidget*) {
        analyzer.waitFor("fault");
        byKey ? QTest::keyClick(&dialog, Qt::Key_Escape) : click(&dialog, "btnCancel");
        QVERIFY(!dialog.isVisible());
      }).during([&] { QCOMPARE(run(dialog), int(QDialog::Rejected)); });
      QCOMPARE(boxes_, QByteArrayList{"Error: Operation Cancelled."});
      QVERIFY(!resources_.isInUse());
    }
  }

  /// The worker may be in the exchange or wait for the answer to a message box.
  void destroyingTheOwnerJoinsTheWorker() {
    replaceMessageBox({});
    using Tcase = std::pair<QString, const char*>;
    for (const auto& [fault, active] :
         {Tcase(QStringLiteral("silence@700"), "TfrmProgress"), Tcase(QStringLiteral("wrong@700"), "QMessageBox")}) {
      TusbAnalyzer analyzer(fault);
      auto owner = std::make_unique<QWidget>();
      const QPointer<TfrmProgress> dialog = new TfrmProgress(&upload_, &resources_, owner.get());
      whenOpen(active, [&](QWidget*) {
        analyzer.waitFor("fault");
        owner.reset();
      }).during([&] { dialog->exec(); });
      QVERIFY(dialog.isNull());
      QVERIFY(!resources_.isInUse());
    }
  }

  void quittingTheApplicationJoinsTheWorker() {
    TusbAnalyzer analyzer(QStringLiteral("silence@700"));
    const auto quit = whenOpen("TfrmProgress", [&](QWidget*) {
      analyzer.waitFor("fault");
      QCoreApplication::quit();
    });
    const auto upload = [&] {
      TfrmProgress dialog(&upload_, &resources_, nullptr);
      quit.during([&] { run(dialog); });
    };
    QMetaObject::invokeMethod(this, upload, Qt::QueuedConnection);
    QCoreApplication::exec();
    QVERIFY(!resources_.isInUse());
    QCOMPARE(boxes_, QByteArrayList());
  }
};
EQREC_TEST(TprogressTest);

#include "progressTest.moc"
