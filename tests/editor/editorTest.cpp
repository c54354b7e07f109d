#include <QHeaderView>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPointer>
#include <QScreen>

#include "editor/editorFixture.h"
#include "support/windows1252.h"
#include "tools/testList.h"

/// The boxes, by field ID.
static constexpr std::array<const char*, fieldCount> boxNames = {
    "txtControlNum", "txtDescription", "txtManufacturer", "txtModel", "txtCustom1", "txtCustom2", "txtCustom3"};

/// The dialog as the user handles it.
class TeditorTest : public QObject {
  Q_OBJECT
 private slots:
  void okStoresAllAndRefills() {
    TeditorFixture f(1);
    f.press(Qt::Key_A, Qt::ControlModifier);
    f.press(Qt::Key_Delete);
    const QByteArray tail(70, 'x');
    for (std::size_t id = 1; id < fieldCount; ++id)
      f.paste(boxNames.at(id), QLatin1String(' ' + (boxNames[id] + tail)));
    f.clickListed(4);
    QCOMPARE(f.text("txtTestProcedure"), QStringLiteral("500 - Defib \"X\""));
    QCOMPARE(f.browser->records().at(0).testProc(), 3U);
    f.click("btnOk");
    QVERIFY(f.editor->isHidden() && !f.editor->isCancelled());
    QCOMPARE(f.field(0, fieldControlNum), "");
    for (std::size_t id = 1; id < fieldCount; ++id) {
      QCOMPARE(f.field(0, static_cast<int>(id)), (boxNames[id] + tail).left(static_cast<int>(textFields[id].size) - 2));
    }
    QCOMPARE(f.browser->records().at(0).testProc(), 500U);
    QCOMPARE(f.browser->refills, 1);
  }

  void cancelDropsChanges() {
    for (const bool byKey : {false, true}) {
      TeditorFixture f;
      f.open(0);
      f.type("txtModel", QStringLiteral("kept"));
      f.click("btnNext");
      f.type("txtModel", QStringLiteral("dropped"));
      f.clickListed(0);
      f.control("txtCustom1")->setFocus();
      byKey ? f.press(Qt::Key_Escape) : f.click("btnCancel");
      QVERIFY(f.editor->isHidden() && f.editor->isCancelled());
      QCOMPARE(f.field(2, fieldModel), "kept");
      QCOMPARE(f.field(0, fieldModel), "");
      QCOMPARE(f.browser->records().at(0).testProc(), 3U);
      QCOMPARE(f.browser->refills, 0);
      QVERIFY(f.ini().contains("HEIGHT=445"));
    }
  }

  void nextAndPreviousStoreAndStop() {
    TeditorFixture f(0);
    f.type("txtControlNum", QStringLiteral(" new "));
    f.click("btnPrev");
    QCOMPARE(f.text("txtControlNum"), QStringLiteral("r2 new "));
    f.clickListed(0);
    f.click("btnNext");
    QCOMPARE(f.browser->current, 1U);
    QCOMPARE(f.field(2, fieldControlNum), "r2 new");
    QCOMPARE(f.browser->records().at(2).testProc(), 5U);
    f.type("txtCustom3", QStringLiteral("c"));
    f.click("btnPrev");
    QCOMPARE(f.field(0, fieldCustom3), "c");
    QCOMPARE(f.text("txtControlNum") + f.text("txtCustom3"), QStringLiteral("r2 new"));
    QCOMPARE(f.text("lblEquipRecDetails"), QStringLiteral("Equipment Record #3"));
    f.open(2);
    f.type("txtModel", QStringLiteral("x"));
    f.click("btnNext");
    QCOMPARE(f.browser->current, 2U);
    QCOMPARE(f.text("txtControlNum") + f.text("txtModel"), QStringLiteral("r1x"));
    QCOMPARE(f.field(1, fieldModel), "");
  }

  void procedureIsShownAndMarked() {
    TeditorFixture f(1);
    QCOMPARE(f.text("txtTestProcedure"), QStringLiteral("3 - defibrillator"));
    QCOMPARE(f.listed(), QStringLiteral("2 3 5 9 500"));
    QCOMPARE(f.marked(), 3);
    f.click("btnNext");
    QCOMPARE(f.marked(), 0);
    QCOMPARE(f.text("lblEquipRecDetails"), QStringLiteral("Equipment Record #1"));
    QCOMPARE(f.text("txtTestProcedure"), QStringLiteral("7 - (UNUSED)"));
    f.list()->setFocus(Qt::TabFocusReason);
    f.click("btnOk");
    QCOMPARE(f.browser->records().at(1).testProc(), 7U);
    f.open(2);
    QCOMPARE(f.text("lblEquipRecDetails"), QStringLiteral("Equipment Record"));
  }

  void nothingToShow() {
    TeditorFixture f(1);
    f.type("txtModel", QStringLiteral("stored"));
    f.browser->rows.clear();
    f.editor->showRecord(TfrmEqRecEditor::noRecord);
    QCOMPARE(f.field(0, fieldModel), "stored");
    QCOMPARE(f.text("txtControlNum") + f.text("txtModel") + f.text("txtTestProcedure"), QString());
    f.open();  // without any record
    f.click("btnNext");
    f.click("btnOk");
    QCOMPARE(f.field(0, fieldControlNum), "r0");
  }

  void listIsSearchedSortedAndMarked() {
    TeditorFixture f(1);
    f.clickListed(0);
    f.type("txtTestProcSearch", QStringLiteral(" DEFIB "));
    f.click("btnSearch");
    QCOMPARE(f.listed(), QStringLiteral("3 500"));
    QCOMPARE(f.marked(), 3);
    QHeaderView* header = f.list()->horizontalHeader();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(header->sectionPosition(1) + 9, 7));
    QCOMPARE(f.listed(), QStringLiteral("500 3"));
    f.type("txtTestProcSearch", QStringLiteral("\u4E2D"));
    f.press(Qt::Key_Enter);
    QCOMPARE(f.listed(), QString());
    QCOMPARE(f.text("txtTestProcedure"), QStringLiteral("3 - defibrillator"));
    f.click("btnClearSearch");
    QCOMPARE(f.listed(), QStringLiteral("500 5 2 9 3"));
    QCOMPARE(f.marked(), 3);
    for (const auto& [sought, found] : {std::pair(u"\u00E4RZ", "5"), {u"unused", ""}, {u"z.*", ""}}) {
      f.click("btnClearSearch");
      f.type("txtTestProcSearch", QString::fromUtf16(sought));
      f.click("btnSearch");
      QCOMPARE(f.listed(), QLatin1String(found));
    }
  }

  void keyboardMarks() {
    TeditorFixture f(2);
    f.list()->setFocus(Qt::TabFocusReason);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}) f.press(key);
    QCOMPARE(f.text("txtTestProcedure"), QStringLiteral("3 - defibrillator"));
    f.control("btnOk")->setFocus();
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    QApplication::sendEvent(f.control("btnOk"), &held);
    QCOMPARE(f.browser->records().at(1).testProc(), 7U);
    f.press(Qt::Key_Return);
    QCOMPARE(f.browser->records().at(1).testProc(), 3U);
    for (unsigned number = 100; number < 200; ++number) f.browser->titles.set(number, "t");
    edit(*f.browser, 2, [&](TequipRec& record) { record.setTestProc(150); });
    f.open(0);
    QCOMPARE(f.list()->rowAt(0), 54);  // the selected row is at the top
  }

  void enterMovesOn() {
    TeditorFixture f;
    edit(*f.browser, 0, [&](TequipRec& record) { record.clear(); });
    f.open();
    for (const char key : QByteArray("1234567890ABCDEFGH")) QTest::keyClick(f.editor->windowHandle(), key);
    f.press(Qt::Key_Return);
    QCOMPARE(f.text("txtControlNum"), QStringLiteral("1234567890ABCDEFG"));
    QCOMPARE(f.editor->focusWidget()->objectName(), QStringLiteral("txtManufacturer"));
    f.control("txtDescription")->setFocus();
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_Return, Qt::Key_Enter, Qt::Key_B}) f.press(key);
    f.press(Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(f.text("txtDescription"), QStringLiteral("ab"));
    QVERIFY(f.editor->isVisible());
  }

  void remarksStandBesideTheBoxes() {
    TeditorFixture f(2);
    QCOMPARE(f.text("lblControlNumUsed") + f.text("lblRemark"), QString());
    for (const Qt::Key key : {Qt::Key_0, Qt::Key_2}) {
      f.press(Qt::Key_Backspace);
      f.press(key);
      QCOMPARE(f.text("lblControlNumUsed"), QStringLiteral("in use"));
      QCOMPARE(f.text("lblRemark"), QStringLiteral("Record %1 has this control number, too").arg(key - Qt::Key_0 + 1));
    }
    for (const char key : QByteArray("34567890ABCDEFGHIJ")) QTest::keyClick(f.editor->windowHandle(), key);
    f.press(Qt::Key_Return);
    QCOMPARE(f.text("lblRemark"), QStringLiteral("Left out, the box is full: HIJ"));
    f.type("txtModel", QStringLiteral("x"));
    QCOMPARE(f.text("lblControlNumUsed") + f.text("lblRemark"), QString());
    f.paste("txtCustom1", QString(62, u'x') + QStringLiteral("yz"));
    QCOMPARE(f.text("lblRemark"), QStringLiteral("Left out, the box is full: z"));
  }

  void keysWalkAndAChosenProcedureIsMarked() {
    TeditorFixture f(1);
    f.clickListed(0);
    QCOMPARE(f.text("lblProcedureMark"), QStringLiteral("chosen, not taken until OK"));
    f.control("txtDescription")->setFocus();
    f.press(Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(f.text("txtControlNum") + f.text("lblProcedureMark"), QStringLiteral("r2"));
    f.press(Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(f.text("txtControlNum"), QStringLiteral("r0"));
    QCOMPARE(f.browser->records().at(0).testProc(), 3U);
    f.clickListed(0);
    f.control("txtDescription")->setFocus();
    f.press(Qt::Key_Return, Qt::ControlModifier);
    QVERIFY(f.editor->isHidden() && !f.editor->isCancelled());
    QCOMPARE(f.browser->records().at(0).testProc(), 2U);
  }

  void settingsAreReadAndStored() {
    TeditorFixture f;
    writeBytes(f.folder / "e.ini",
               "[EQEDITOR]\nTOP=40\nLEFT=30\nHEIGHT=9\n[EDITGRID]\nCOL_0_WIDTH=44\nSORTCOL=1\nSORTASC=0\n"
               "[CUSTOMFIELDS]\nFIELD1NAME=R&D <b>\nFIELD2NAME=\n");
    f.open();
    QCOMPARE(f.editor->pos(), QPoint(30, 40));
    QCOMPARE(f.listed(), QStringLiteral("3 9 2 5 500"));
    QCOMPARE(f.list()->columnWidth(0), 44);
    QCOMPARE(f.list()->rowHeight(0), 15);
    QCOMPARE(f.text("lblCustom1") + f.text("lblCustom2") + f.text("lblCustom3"), QStringLiteral("R&D <b>Custom 3"));
    const QImage caption = f.control("lblCustom1")->grab().toImage();
    f.control<QLabel>("lblCustom1")->setText(QStringLiteral("RD <b>"));
    QVERIFY2(f.control("lblCustom1")->grab().toImage() != caption, "the & is swallowed");
    f.editor->move(77, 66);
    f.list()->setColumnWidth(0, 55);
    f.list()->setColumnWidth(1, 66);
    f.click("btnOk");
    f.editor.reset();
    for (const char* lines : {"HEIGHT=445\n", "WIDTH=534\n", "TOP=66\n", "LEFT=77\n",
                              "COL_0_WIDTH=55\nSORTCOL=1\nSORTASC=0\nCOL_1_WIDTH=66\n"}) {
      QVERIFY2(f.ini().contains(lines), f.ini().constData());
    }
  }

  void opensCentredAndTheHostMayGoFirst() {
    TeditorFixture f;
    const QPointer editor(new TfrmEqRecEditor(*f.browser, TiniFile(f.folder / "e.ini"), f.browser.get()));
    const auto offCentre = [](const QWidget& window) {
      return (window.geometry().center() - window.screen()->availableGeometry().center()).manhattanLength();
    };
    QVERIFY(offCentre(*editor) < 3);
    for (const char* half : {"TOP=5", "LEFT=5"}) {
      writeBytes(f.folder / "half.ini", QByteArray("[EQEDITOR]\n") + half);
      QVERIFY(offCentre(TfrmEqRecEditor(*f.browser, TiniFile(f.folder / "half.ini"), nullptr)) < 3);
    }
    editor->showRecord(0);
    whenOpen("TfrmEqRecEditor", [&](QWidget*) { f.browser.reset(); }).during([&] { editor->exec(); });
    QVERIFY(editor.isNull());
  }

  void boxesTakeCleanInput() {
    for (const auto& [box, limit] : {std::pair("txtControlNum", 17), std::pair("txtCustom1", 63)}) {
      TeditorFixture f;
      edit(*f.browser, 0, [&](TequipRec& record) { record.clear(); });
      f.open();
      f.type(box, QStringLiteral("a\u4E2D\"b"));
      f.paste(box, QStringLiteral("c\r\nd\u0416\"a\u0308\n\r\u2028\u0416\n\t\u20AC%1\x1B\x7F\u0081\U0001F600")
                       .arg(QChar(u'\0')));
      f.press(Qt::Key_Z, Qt::ControlModifier);
      QCOMPARE(f.text(box), QStringLiteral("a\u201Db"));
      f.press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
      QInputMethodEvent commit;
      commit.setCommitString(QStringLiteral("f\"\u0416g"));
      QApplication::sendEvent(f.control(box), &commit);
      QCOMPARE(f.text(box), QStringLiteral("a\u201Dbc d\u201D\u00E4  \u20ACf\u201Dg"));
      f.type(box, QString(limit, u'x'));
      QCOMPARE(f.text(box).size(), limit);
      f.press(Qt::Key_A, Qt::ControlModifier);
      f.paste(box, QStringLiteral("\u4E2D\r\n\"zz").repeated(11000));
      QCOMPARE(f.text(box), QStringLiteral(" \u201Dzz").repeated(16).left(limit));
    }
  }

  void inputMethodReplacesText() {
    for (const char* box : {"txtControlNum", "txtDescription"}) {
      TeditorFixture f(1);
      f.control<QWidget>(box)->setFocus();
      f.press(Qt::Key_A, Qt::ControlModifier);
      f.type(box, QString(300, u'a'));  // full
      QInputMethodEvent commit;
      commit.setCommitString(QStringLiteral("\""), -2, 2);
      const auto before = f.text(box);
      QApplication::sendEvent(f.control(box), &commit);
      QCOMPARE(f.text(box), before.chopped(2) + QChar(0x201D));
    }
  }

  void minimizingKeepsWhatIsTyped() {
    TeditorFixture f(1);
    f.type("txtModel", QStringLiteral("typed"));
    f.clickListed(0);
    QShowEvent shownAgain;
    QSpontaneKeyEvent::setSpontaneous(&shownAgain);
    qApp->notify(f.editor.get(), &shownAgain);
    QCOMPARE(f.text("txtModel") + f.text("txtTestProcedure"), QStringLiteral("typed2 - Zoom"));
    QCOMPARE(f.field(0, fieldModel), "");
  }

  void tabGoesThroughTheEditorInOrder() {
    TeditorFixture f(1);
    QCOMPARE(tabOrder(f.editor.get()),
             QStringLiteral("txtControlNum txtManufacturer txtModel txtDescription txtCustom1 txtCustom2 txtCustom3 "
                            "txtTestProcedure txtTestProcSearch btnSearch btnClearSearch lstTestProc btnPrev btnNext "
                            "btnOk btnCancel"));
  }

  void everyByteSurvives() {
    TeditorFixture f(1);
    for (int byte = 1; byte < 256; ++byte) {
      const std::string text = std::string("x") + static_cast<char>(byte) + "y";
      f.editor->showRecord(1);
      for (int field = 0; field < fieldCount; ++field)
        edit(*f.browser, 0, [&](TequipRec& record) { record.setText(field, text); });
      f.editor->showRecord(0);
      f.editor->showRecord(1);  // stores the boxes
      for (int field = 0; field < fieldCount; ++field) QCOMPARE(f.field(0, field), text);
    }
  }

  void menuPastesCleanedAndCutKeepsEveryByte() {
    TeditorFixture f;
    edit(*f.browser, 2, [&](TequipRec& record) { record.setText(fieldDescription, "a\xA0\x80z"); });
    f.open(0);
    QApplication::clipboard()->setText(QStringLiteral("\"\u4E2D"));
    pasteByMenu(f.control<QLineEdit>("txtControlNum"));
    QCOMPARE(f.text("txtControlNum"), QStringLiteral("r2\u201D"));
    QMimeData text;
    text.setText(QStringLiteral("\"\u4E2D"));
    QDragEnterEvent enter(QPoint(1, 1), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(f.control("txtControlNum"), &enter);
    QDropEvent drop(QPointF(1, 1), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(f.control("txtControlNum"), &drop);
    QCOMPARE(f.text("txtControlNum"), QStringLiteral("\u201Dr2\u201D"));
    f.control("txtDescription")->setFocus();
    f.press(Qt::Key_A, Qt::ControlModifier);
    f.press(Qt::Key_X, Qt::ControlModifier);
    f.paste("txtCustom1", QApplication::clipboard()->text());
    QCOMPARE(toRecordText(f.text("txtDescription") + f.text("txtCustom1")), "a\xA0\x80z");
  }
};
EQREC_TEST(TeditorTest);

#include "editorTest.moc"
