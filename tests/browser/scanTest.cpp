#include <QApplication>
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

  /// The keys that a scanner presses, in whatever has the focus.
  static void scan(const QWidget* window, const QString& text) {
    for (const QChar key : text) QTest::keyClick(window->windowHandle(), key.toLatin1());
    QTest::keyClick(window->windowHandle(), Qt::Key_Return);
  }

 private slots:
  void opensTheRecordWithExactlyThisNumber() {
    TframeFixture f;
    writeRecords(f.folder.path(), {"b1", "b", "a", "a"}, {"x", "y", "z", "z"});
    f.open();
    f.press(Qt::Key_End);  // whichever column is current
    QCOMPARE(openedBy([&] { f.press(Qt::Key_B), f.press(Qt::Key_Enter); }), QStringLiteral("b"));
    QCOMPARE(f.selectedRows(), QList<int>({1}));
    f.search("txtDescSearch", QStringLiteral("z"));
    f.grid()->setFocus();
    QCOMPARE(openedBy([&] { f.press(Qt::Key_B), f.press(Qt::Key_1), f.press(Qt::Key_Return); }), QStringLiteral("b1"));
    QCOMPARE(f.column(1), QStringLiteral("b1 b a a"));
    QVERIFY(f.control("txtDescSearch")->text().isEmpty());
    QCOMPARE(openedBy([&] { scan(f.frame.get(), QStringLiteral("a")); }), QStringLiteral("a"));
    QCOMPARE(status(f), QStringLiteral("4 records \u00B7 2 records have the control number a"));
    f.press(Qt::Key_Home, Qt::ControlModifier);
    f.press(Qt::Key_Down);
    QCOMPARE(openedBy([&] { f.press(Qt::Key_Return); }), QStringLiteral("b"));
  }

  void unknownNumberOpensNothing() {
    TopenFrame f;
    f.press(Qt::Key_A);
    f.press(Qt::Key_X);
    QTest::sendKeyEvent(QTest::Press, f.grid(), Qt::Key_Return, QString(), Qt::NoModifier);
    QKeyEvent held(QEvent::KeyRelease, Qt::Key_Return, Qt::NoModifier, {}, true);
    QApplication::sendEvent(f.grid(), &held);
    QCOMPARE(status(f), QStringLiteral("3 records \u00B7 Control number: ax"));
    QTest::sendKeyEvent(QTest::Release, f.grid(), Qt::Key_Return, QString(), Qt::NoModifier);
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

  /// What a scanner does twenty times in each place that takes control numbers.
  void twentyScansLandWhereTheFocusIs() {
    for (const char* place : {"grid", "search", "editor"}) scanTwenty(QLatin1String(place));
  }

 private:
  static void scanTwenty(QLatin1String place) {
    QByteArrayList numbers;
    for (int i = 0; i < 20; ++i) numbers << "EQ-" + QByteArray::number(7919 * (i + 1)).rightJustified(6, '0');
    TframeFixture f;
    if (place != QStringLiteral("editor")) writeRecords(f.folder.path(), numbers, QByteArrayList(20, "x"));
    f.open();
    if (place == QStringLiteral("search")) f.press(Qt::Key_F, Qt::ControlModifier);
    for (const QByteArray& number : numbers) {
      const QString text = QString::fromLatin1(number);
      if (place == QStringLiteral("grid")) {
        QCOMPARE(openedBy([&] { scan(f.frame.get(), text); }), text);
        QCOMPARE(f.grid()->currentIndex().siblingAtColumn(1).data().toString(), text);
      } else if (place == QStringLiteral("search")) {
        scan(f.frame.get(), text);
        QCOMPARE(f.column(1), text);
      } else {
        whenOpen("TfrmEqRecEditor", [&](QWidget* editor) {
          scan(editor, text);
          QTest::keyClick(editor->windowHandle(), Qt::Key_Return, Qt::ControlModifier);
        }).during([&] { f.click("btnAdd"); });
      }
    }
    if (place == QStringLiteral("editor")) {
      QCOMPARE(f.column(1), QStringLiteral("c a b ") + QString::fromLatin1(numbers.join(' ')));
    }
  }

 private slots:
  void keysReachTheButtons() {
    TopenFrame f;
    f.search("txtDescSearch", QStringLiteral("alone"));
    f.control("txtDescSearch")->setFocus();
    f.press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(f.column(1), QStringLiteral("c a b"));
    using Tcase = std::tuple<Qt::Key, const char*, const char*>;
    for (const auto& [key, dialog, button] :
         {Tcase(Qt::Key_Comma, "TfrmOptions", "btnCancel"), Tcase(Qt::Key_I, "TEquipRecImportOptions", "BtnCancel"),
          Tcase(Qt::Key_U, "TcomSelectFrm", "btnCancel"), Tcase(Qt::Key_R, "TfrmChange", "btnCancel")}) {
      clickIn(dialog, button).during([&, key = key] { f.press(key, Qt::ControlModifier); });
      f.frame->activateWindow();
      QVERIFY(QTest::qWaitForWindowActive(f.frame.get()));
    }
    f.onReturn = [&] { f.frame.reset(); };
    f.press(Qt::Key_W, Qt::ControlModifier);
    QTRY_VERIFY(f.frame == nullptr);
  }
};
EQREC_TEST(TscanTest);

#include "scanTest.moc"
