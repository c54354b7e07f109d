#include <QLabel>
#include <QTest>

#include "browser/frameFixture.h"
#include "tools/testList.h"

/// A barcode scanner's text in the grid: it types, and ends with Enter.
class TscanTest : public QObject {
  Q_OBJECT

  static QString status(const TframeFixture& f) { return f.control<QLabel>("lblStatus")->text(); }

  /// The control number in the editor that the keys open.
  static QString openedBy(const std::function<void()>& press) {
    QString shown;
    whenOpen("TfrmEqRecEditor", [&](QWidget* editor) {
      shown = control<QLineEdit>(editor, "txtControlNum")->text();
      click(editor, "btnCancel");
    }).during(press);
    return shown;
  }

 private slots:
  void opensTheRecordWithExactlyThisNumber() {
    TframeFixture f;
    writeRecords(f.folder.path(), {"b1", "b", "a"}, {"x", "y", "z"});
    f.open();
    f.press(Qt::Key_End);  // whichever column is current
    QCOMPARE(openedBy([&] { f.press(Qt::Key_B), f.press(Qt::Key_Enter); }), QStringLiteral("b"));
    QCOMPARE(f.selectedRows(), QList<int>({1}));
    f.search("txtDescSearch", QStringLiteral("z"));
    f.grid()->setFocus();
    QCOMPARE(openedBy([&] { f.press(Qt::Key_B), f.press(Qt::Key_1), f.press(Qt::Key_Return); }), QStringLiteral("b1"));
    QCOMPARE(f.column(1), QStringLiteral("b1 b a"));
    QVERIFY(f.control("txtDescSearch")->text().isEmpty());
    f.press(Qt::Key_Down);
    QCOMPARE(openedBy([&] { f.press(Qt::Key_Return); }), QStringLiteral("b"));
  }

  void unknownNumberOpensNothing() {
    TopenFrame f;
    f.press(Qt::Key_A);
    f.press(Qt::Key_X);
    QCOMPARE(status(f), QStringLiteral("3 records \u00B7 Control number: ax"));
    f.press(Qt::Key_Return);
    QCOMPARE(status(f), QStringLiteral("3 records \u00B7 No record has the control number ax"));
    QCOMPARE(f.selectedRows(), QList<int>({0}));
    f.press(Qt::Key_B);
    f.press(Qt::Key_Tab);
    f.press(Qt::Key_Backtab);  // forgets the text
    f.press(Qt::Key_A);
    f.press(Qt::Key_X);
    f.press(Qt::Key_Backspace);
    QCOMPARE(openedBy([&] { f.press(Qt::Key_Return); }), QStringLiteral("a"));
  }

  void keysReachTheButtons() {
    TopenFrame f;
    f.search("txtDescSearch", QStringLiteral("alone"));
    f.control("txtDescSearch")->setFocus();
    f.press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(f.column(1), QStringLiteral("c a b"));
    whenOpen("TfrmOptions", [](QWidget* options) { click(options, "btnCancel"); }).during([&] {
      f.press(Qt::Key_Comma, Qt::ControlModifier);
    });
    f.frame->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(f.frame.get()));
    f.onReturn = [&] { f.frame.reset(); };
    f.press(Qt::Key_W, Qt::ControlModifier);
    QTRY_VERIFY(f.frame == nullptr);
  }
};
EQREC_TEST(TscanTest);

#include "scanTest.moc"
