#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QTest>
#include <utility>

#include "support/log.h"
#include "tools/testList.h"
#include "tools/testPlatform.h"
#include "upload/commandFixture.h"

namespace {

void awaitStandstill(const QProgressBar& bar) {
  int last = -1;
  while (std::exchange(last, bar.value()) != bar.value() || last <= 0) QTest::qWait(100);
}

}  // namespace

/// Uploads over a driver one of whose calls does not return until the analyzer is unplugged.
class ThangTest : public QObject, private TcommandFixture {
  Q_OBJECT

 private:
  std::unique_ptr<TusbAnalyzer> analyzer_;

  /// Presses Connect, and Cancel in the dialog that hangs. The greeting's dialog appears only then.
  void uploadUntilItHangs(const char* dialog) {
    QElapsedTimer timer;
    QVERIFY(!upload(connecting + whenOpen(dialog, [&](QWidget* window) {
                      if (const auto* bar = window->findChild<QProgressBar*>()) awaitStandstill(*bar);
                      timer.start();
                      click(window, "btnCancel");
                    })));
    QVERIFY(timer.elapsed() < 3000);
  }
  QWidget* waitingWindow() const { return owner_->findChild<QWidget*>(QStringLiteral("TfrmWaiting")); }

 private slots:
  void initTestCase() { QVERIFY(loadStandInDriver()); }
  void init() { start(); }
  void cleanup() {
    end();
    qunsetenv("QT484_USB_HANG");
  }

  /// The host goes on at once. A second upload only shows the window again.
  void aWindowWaitsForTheUnplugging() {
    using Tcase = std::tuple<const char*, const char*, int>;
    for (const auto& [call, dialog, boxes] :
         {Tcase("FT_OpenEx", "TfrmGreeting", 1), Tcase("FT_Write", "TfrmGreeting", 1),
          Tcase("FT_Close", "TfrmGreeting", 0),  // all was exchanged before
          Tcase("FT_Write@700", "TfrmProgress", 1), Tcase("FT_Read@2", "TfrmProgress", 1)}) {
      analyzer_ = std::make_unique<TusbAnalyzer>();
      qputenv("QT484_USB_HANG", call);
      uploadUntilItHangs(dialog);
      QVERIFY2(waitingWindow() != nullptr, call);
      QCOMPARE(control<QLabel>(waitingWindow(), "lblWaiting")->text(),
               QStringLiteral("Waiting for the connection to end. Unplug the cable if this takes long."));
      QVERIFY(waitingWindow()->isVisible() && !waitingWindow()->isModal());
      waitingWindow()->hide();
      QVERIFY(!upload() && waitingWindow()->isVisible());
      QCOMPARE(takeBoxes(), QByteArrayList());
      analyzer_.reset();
      QTRY_VERIFY(waitingWindow() == nullptr);
      QCOMPARE(takeBoxes().size(), boxes);
    }
  }

  /// Its window is gone before the message.
  void aSlowGreetingCanBeCancelled() {
    const auto escape = [](QWidget* window) { QTest::keyClick(window, Qt::Key_Escape); };
    const auto cancel = [](QWidget* window) { click(window, "btnCancel"); };
    const auto wait = [](QWidget*) {};
    using Tcase = std::tuple<QString, TdialogSteps::Tact, QByteArrayList>;
    for (const auto& [fault, act, boxes] :
         {Tcase(QStringLiteral("silence@handshake"), cancel, {"Operation Cancelled."}),
          Tcase(QStringLiteral("silence@handshake"), escape, {"Operation Cancelled."}),
          Tcase(QStringLiteral("silence@handshake"), wait, {"Timeout Error.\nOperation Canceled."}),
          Tcase(QStringLiteral("late@handshake"), wait, {})}) {
      analyzer_ = std::make_unique<TusbAnalyzer>(fault);
      QCOMPARE(upload(connecting + whenOpen("TfrmGreeting", act)).has_value(), boxes.isEmpty());
      QCOMPARE(takeBoxes(), boxes);
      QVERIFY(waitingWindow() == nullptr);
    }
  }

  /// The worker is left to itself, with what it has kept.
  void theApplicationEndsWithinFiveSeconds() {
    qputenv("QT484_USB_HANG", "FT_Write@2");
    openLog(folder_.path());
    const auto handles = openHandles();
    analyzer_ = std::make_unique<TusbAnalyzer>();
    QElapsedTimer timer;
    const auto hang = [&] {
      uploadUntilItHangs("TfrmProgress");
      timer.start();
      QCoreApplication::exit();
    };
    QMetaObject::invokeMethod(this, hang, Qt::QueuedConnection);
    QCoreApplication::exec();
    QVERIFY(waitingWindow() == nullptr && timer.elapsed() < 6000);
    analyzer_.reset();  // the thread goes on
    QTRY_VERIFY(openHandles() <= handles);
    QCOMPARE(takeBoxes(), QByteArrayList());
    closeLog();
    QCOMPARE(linesOf(folder_ / "EquipmentRecord.log").count("left to the end of the process"), 1);
  }
};
EQREC_TEST(ThangTest);

#include "hangTest.moc"
