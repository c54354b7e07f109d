#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QTest>
#include <utility>

#include "support/iniFile.h"
#include "support/log.h"
#include "support/messageBox.h"
#include "tools/analyzerProcess.h"
#include "tools/dialogs.h"
#include "tools/recordChanges.h"
#include "tools/testFiles.h"
#include "tools/testList.h"
#include "tools/testPlatform.h"
#include "upload/lineRest.h"
#include "upload/uploadCommand.h"

namespace {

void awaitStandstill(const QProgressBar& bar) {
  int last = -1;
  while (std::exchange(last, bar.value()) != bar.value() || last <= 0) QTest::qWait(100);
}

}  // namespace

/// Uploads over a driver one of whose calls does not return until the analyzer is unplugged.
class ThangTest : public QObject {
  Q_OBJECT

 private:
  TtestFolder folder_;
  const TiniFile settings_{folder_ / "QT484pc.ini"};
  QByteArrayList boxes_;
  std::unique_ptr<QWidget> owner_;
  std::unique_ptr<TusbAnalyzer> analyzer_;
  TequipRecTable records_;

  bool upload() { return uploadRecords(owner_.get(), records_, settings_).has_value(); }

  /// Presses Connect, and Cancel in the dialog that hangs. The greeting's dialog appears only then.
  void uploadUntilItHangs(const char* dialog) {
    const auto steps = clickIn("TcomSelectFrm", "btnConnect") + whenOpen(dialog, [](QWidget* window) {
                         if (const auto* bar = window->findChild<QProgressBar*>()) awaitStandstill(*bar);
                         click(window, "btnCancel");
                       });
    steps.during([this] { QVERIFY(!upload()); });
  }
  QWidget* waitingWindow() const { return owner_->findChild<QWidget*>(QStringLiteral("TfrmWaiting")); }
  QByteArrayList takeBoxes() { return std::exchange(boxes_, {}); }

 private slots:
  void initTestCase() { QVERIFY(loadStandInDriver()); }
  void init() {
    forgetBrokenOff();
    owner_ = std::make_unique<QWidget>();
    owner_->show();
    append(records_, makeRecord({"A-1"}));
    replaceMessageBox([this](QWidget*, const TmessageText& message, auto, const QString&) {
      boxes_ << message.text;
      for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window != owner_.get()) boxes_ << "behind it: " + window->objectName().toLatin1();
      }
      return QMessageBox::Ok;
    });
  }
  void cleanup() {
    replaceMessageBox({});
    records_ = {};
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
      const auto steps = clickIn("TcomSelectFrm", "btnConnect") + whenOpen("TfrmGreeting", act);
      steps.during([&, done = boxes.isEmpty()] { QCOMPARE(upload(), done); });
      QCOMPARE(takeBoxes(), boxes);
      QVERIFY(waitingWindow() == nullptr);
    }
  }

  /// The worker is left to itself where the frame is deleted, and where the application quits.
  void theHostEndsWithinFiveSeconds() {
    qputenv("QT484_USB_HANG", "FT_Write@2");
    openLog(folder_.path());
    const auto handles = openHandles();
    for (const bool quits : {true, false}) {
      analyzer_ = std::make_unique<TusbAnalyzer>();
      QElapsedTimer timer;
      const auto hang = [&] {
        uploadUntilItHangs("TfrmProgress");
        timer.start();
        QCoreApplication::exit();
      };
      if (quits) {
        QMetaObject::invokeMethod(this, hang, Qt::QueuedConnection);
        QCoreApplication::exec();
        QVERIFY(waitingWindow() == nullptr);
      } else {
        uploadUntilItHangs("TfrmProgress");
        timer.start();
        owner_.reset();
      }
      QVERIFY(timer.elapsed() < 6000);
      analyzer_.reset();  // the thread goes on with what it has kept
      QTRY_VERIFY(openHandles() <= handles);
      QCOMPARE(takeBoxes(), QByteArrayList());
    }
    closeLog();
    QCOMPARE(linesOf(folder_ / "EquipmentRecord.log").count("left to the end of the process"), 2);
  }
};
EQREC_TEST(ThangTest);

#include "hangTest.moc"
