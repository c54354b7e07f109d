#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QScrollBar>
#include <QTimer>

#include "editor/editorFixture.h"
#include "tools/testList.h"

/// The dialog as the user handles it.
class TdialogTest : public QObject {
  Q_OBJECT
 private slots:
  void opensAsDesigned();
  void listFillsItsWidth();
  void customNamesAreShownLiterally();
  void okStoresAllAndRefills();
  void okTakesEmptyControlNumber();
  void cancelDropsChanges_data();
  void cancelDropsChanges();
  void nextAndPreviousStore();
  void endsOfGridDoNothing();
  void unusedProcedureIsNotMarked();
  void nothingToShow();
  void listIsSearchedSortedAndMarked();
  void keyboardMarks();
  void markedRowIsScrolledToTop();
  void scannerFillsControlNumber();
  void tabVisitsAll();
  void placeIsStored_data();
  void placeIsStored();
  void listLayoutIsStored();
  void hostMayGoFirst();
};
EQREC_TEST(TdialogTest);

/// The boxes by field id.
static constexpr std::array<const char*, fieldCount> boxNames = {
    "txtControlNum", "txtDescription", "txtManufacturer", "txtModel", "txtCustom1", "txtCustom2", "txtCustom3"};

void TdialogTest::opensAsDesigned() {
  TeditorFixture f;
  f.open();
  QCOMPARE(f.editor->windowTitle(), QStringLiteral("Equipment Record Editor"));
  QCOMPARE(f.editor->objectName(), QStringLiteral("TfrmEqRecEditor"));
  QCOMPARE(f.editor->minimumSize(), f.editor->maximumSize());
  QCOMPARE(f.editor->size().expandedTo(QSize(534, 445)), f.editor->size());
  QVERIFY(f.editor->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
  QCOMPARE(f.text("txtControlNum"), QStringLiteral("r0"));
  QCOMPARE(f.text("lblEquipRecDetails"), QStringLiteral("Equipment Record #1"));
  QCOMPARE(f.text("txtTestProcedure"), QStringLiteral("3 - defibrillator"));
}

void TdialogTest::listFillsItsWidth() {
  TeditorFixture f;
  f.open();
  QCOMPARE(f.listed(), QStringLiteral("2 3 5 9 500"));
  QCOMPARE(f.marked(), 3);
  QCOMPARE(f.list()->rowHeight(0), 15);
  QCOMPARE(f.list()->columnWidth(0) + f.list()->columnWidth(1), f.list()->viewport()->width());
}

void TdialogTest::customNamesAreShownLiterally() {
  TeditorFixture f;
  writeBytes(f.folder / "e.ini", "[CUSTOMFIELDS]\nFIELD1NAME=R&D <b>\nFIELD2NAME=\n");
  f.open();
  QCOMPARE(f.text("lblCustom1"), QStringLiteral("R&D <b>"));
  QCOMPARE(f.text("lblCustom2"), QString());
  QCOMPARE(f.text("lblCustom3"), QStringLiteral("Custom 3"));
  const QImage caption = f.control<QLabel>("lblCustom1")->grab().toImage();
  f.control<QLabel>("lblCustom1")->setText(QStringLiteral("RD <b>"));
  QVERIFY2(f.control<QLabel>("lblCustom1")->grab().toImage() != caption, "the & is swallowed");
}

void TdialogTest::okStoresAllAndRefills() {
  TeditorFixture f;
  f.open();
  for (const char* box : boxNames) f.paste(box, QStringLiteral(" %1\t").arg(QLatin1String(box)));
  f.clickListed(4);
  QCOMPARE(f.text("txtTestProcedure"), QStringLiteral("500 - Defib \"X\""));
  QCOMPARE(f.browser->records().at(0).testProc(), 3U);
  f.click("btnOk");
  QVERIFY(f.editor->isHidden() && f.editor->result() == QDialog::Accepted && !f.editor->isCancelled());
  QCOMPARE(f.field(0, fieldControlNum), "r0 txtControlNum");
  for (std::size_t id = 1; id < fieldCount; ++id) QCOMPARE(f.field(0, static_cast<int>(id)), boxNames.at(id));
  QCOMPARE(f.browser->records().at(0).testProc(), 500U);
  QCOMPARE(f.browser->refills, 1);
}

void TdialogTest::okTakesEmptyControlNumber() {
  TeditorFixture f;
  f.open();
  f.press(Qt::Key_A, Qt::ControlModifier);
  f.press(Qt::Key_Delete);
  f.click("btnOk");
  QCOMPARE(f.field(0, fieldControlNum), "");
}

void TdialogTest::cancelDropsChanges_data() {
  QTest::addColumn<int>("way");
  QTest::newRow("button") << 0;
  QTest::newRow("Esc in a memo") << 1;
  QTest::newRow("close box") << 2;
}

void TdialogTest::cancelDropsChanges() {
  QFETCH(int, way);
  TeditorFixture f;
  f.open(0);
  f.type("txtModel", QStringLiteral("kept"));
  f.click("btnNext");
  f.type("txtModel", QStringLiteral("dropped"));
  f.clickListed(0);
  f.control<QWidget>("txtCustom1")->setFocus();
  if (way == 0) f.click("btnCancel");
  if (way == 1) f.press(Qt::Key_Escape);
  if (way == 2) f.editor->close();
  QCOMPARE(f.editor->result(), static_cast<int>(QDialog::Accepted));
  QVERIFY(f.editor->isHidden() && f.editor->isCancelled());
  QCOMPARE(f.field(2, fieldModel), "kept");
  QCOMPARE(f.field(0, fieldModel), "");
  QCOMPARE(f.browser->records().at(0).testProc(), 3U);
  QCOMPARE(f.browser->refills, 0);
  QVERIFY(f.ini().contains("HEIGHT=445"));
  f.editor->clearCancelled();
  QVERIFY(!f.editor->isCancelled());
}

void TdialogTest::nextAndPreviousStore() {
  TeditorFixture f;
  f.open(0);
  f.type("txtControlNum", QStringLiteral(" new "));
  f.clickListed(0);
  f.click("btnNext");
  QCOMPARE(f.browser->current, 1U);
  QCOMPARE(f.field(2, fieldControlNum), "r2 new");
  QCOMPARE(f.browser->records().at(2).testProc(), 5U);
  QCOMPARE(f.text("txtControlNum"), QStringLiteral("r0"));
  f.type("txtCustom3", QStringLiteral("c"));
  f.click("btnPrev");
  QCOMPARE(f.browser->current, 0U);
  QCOMPARE(f.field(0, fieldCustom3), "c");
  QCOMPARE(f.text("txtControlNum") + f.text("txtCustom3"), QStringLiteral("r2 new"));
  QCOMPARE(f.text("lblEquipRecDetails"), QStringLiteral("Equipment Record #3"));
}

void TdialogTest::endsOfGridDoNothing() {
  TeditorFixture f;
  f.open(0);
  f.type("txtModel", QStringLiteral("x"));
  f.click("btnPrev");
  QCOMPARE(f.text("txtModel"), QStringLiteral("x"));
  f.open(2);
  f.type("txtModel", QStringLiteral("x"));
  f.click("btnNext");
  QCOMPARE(f.browser->current, 2U);
  QCOMPARE(f.text("txtControlNum") + f.text("txtModel"), QStringLiteral("r1x"));
  QCOMPARE(f.field(1, fieldModel), "");
}

void TdialogTest::unusedProcedureIsNotMarked() {
  TeditorFixture f;
  f.open();
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

void TdialogTest::nothingToShow() {
  TeditorFixture f;
  f.open();
  f.type("txtModel", QStringLiteral("stored"));
  f.browser->rows.clear();
  f.editor->showRecord(TfrmEqRecEditor::noRecord);
  QCOMPARE(f.field(0, fieldModel), "stored");
  QCOMPARE(f.text("txtControlNum") + f.text("txtModel") + f.text("txtTestProcedure"), QString());
  QCOMPARE(f.marked(), 0);
  f.open();  // without a record from the beginning
  f.click("btnNext");
  f.type("txtControlNum", QStringLiteral("lost"));
  f.click("btnOk");
  QCOMPARE(f.field(0, fieldControlNum), "r0");
}

void TdialogTest::listIsSearchedSortedAndMarked() {
  TeditorFixture f;
  f.open();
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
  QCOMPARE(f.text("txtTestProcSearch"), QString());
  QCOMPARE(f.listed(), QStringLiteral("500 5 2 9 3"));
  QCOMPARE(f.marked(), 3);
  QVERIFY(f.editor->isVisible());
}

void TdialogTest::keyboardMarks() {
  TeditorFixture f;
  f.open(2);
  f.list()->setFocus(Qt::TabFocusReason);
  f.press(Qt::Key_Down);
  QCOMPARE(f.marked(), 2);
  f.press(Qt::Key_Down);
  QCOMPARE(f.text("txtTestProcedure"), QStringLiteral("3 - defibrillator"));
  f.press(Qt::Key_Return);
  f.control<QPushButton>("btnOk")->setFocus();
  f.press(Qt::Key_Return);
  QVERIFY(f.editor->isHidden());
  QCOMPARE(f.browser->records().at(1).testProc(), 3U);
}

void TdialogTest::markedRowIsScrolledToTop() {
  TeditorFixture f;
  for (unsigned number = 100; number < 200; ++number) f.browser->titles.set(number, "t");
  f.browser->records().at(2).setTestProc(150);
  f.browser->records().at(0).setTestProc(199);
  f.open(0);
  QCOMPARE(f.list()->rowAt(0), 54);
  f.click("btnNext");
  QCOMPARE(f.list()->verticalScrollBar()->value(), f.list()->verticalScrollBar()->maximum());
  f.click("btnPrev");
  QCOMPARE(f.list()->rowAt(0), 54);
}

void TdialogTest::scannerFillsControlNumber() {
  TeditorFixture f;
  f.browser->records().at(0).clear();
  f.open();
  for (const char key : QByteArray("1234567890ABCDEFGH")) {
    QTest::keyClick(f.editor->windowHandle(), key);
  }
  f.press(Qt::Key_Return);
  QVERIFY(f.editor->isVisible());
  QCOMPARE(f.text("txtControlNum"), QStringLiteral("1234567890ABCDEFG"));
  QCOMPARE(f.editor->focusWidget()->objectName(), QStringLiteral("txtManufacturer"));
  f.control<QWidget>("txtDescription")->setFocus();
  for (const Qt::Key key : {Qt::Key_A, Qt::Key_Return, Qt::Key_Enter, Qt::Key_B}) f.press(key);
  f.press(Qt::Key_Return, Qt::ShiftModifier);
  QCOMPARE(f.text("txtDescription"), QStringLiteral("ab"));
  QVERIFY(f.editor->isVisible());
}

void TdialogTest::tabVisitsAll() {
  TeditorFixture f;
  f.open();
  QStringList visited;
  for (int i = 0; i < 17; ++i) {
    QVERIFY(!f.editor->focusWidget()->accessibleName().isEmpty());
    visited << f.editor->focusWidget()->objectName();
    f.press(Qt::Key_Tab);
  }
  QCOMPARE(visited.join(QLatin1Char(' ')),
           QStringLiteral("txtControlNum txtManufacturer txtModel txtDescription txtCustom1 txtCustom2 txtCustom3 "
                          "txtTestProcedure txtTestProcSearch btnSearch btnClearSearch lstTestProc btnPrev btnNext "
                          "btnOk btnCancel txtControlNum"));
}

void TdialogTest::placeIsStored_data() {
  QTest::addColumn<QByteArray>("ini");
  QTest::addColumn<bool>("centred");
  QTest::newRow("nothing stored: centred") << QByteArray() << true;
  QTest::newRow("one is -1: centred") << QByteArray("[EQEDITOR]\nTOP=-1\nLEFT=30\n") << true;
  QTest::newRow("stored") << QByteArray("[EQEDITOR]\nTOP=40\nLEFT=30\nHEIGHT=9\nWIDTH=9\n") << false;
  QTest::newRow("stored, not on the screen") << QByteArray("[EQEDITOR]\nTOP=-40\nLEFT=9000\n") << false;
}

void TdialogTest::placeIsStored() {
  QFETCH(QByteArray, ini);
  QFETCH(bool, centred);
  TeditorFixture f;
  writeBytes(f.folder / "e.ini", ini);
  f.editor = std::make_unique<TfrmEqRecEditor>(*f.browser, TiniFile(f.folder / "e.ini"), nullptr);
  const QPoint offCentre = f.editor->geometry().center() - f.editor->screen()->availableGeometry().center();
  QCOMPARE(offCentre.manhattanLength() < 3, centred);
  f.editor.reset();
  QCOMPARE(f.ini().contains("TOP=40\nLEFT=30\n"), ini.contains("TOP=40"));
  QCOMPARE(f.ini().contains("TOP=-40\nLEFT=9000\n"), ini.contains("TOP=-40"));
  f.open();
  f.editor->move(77, 66);
  f.click("btnOk");
  for (const char* line : {"HEIGHT=445\n", "WIDTH=534\n", "TOP=66\n", "LEFT=77\n"})
    QVERIFY2(f.ini().contains(line), line);
}

void TdialogTest::listLayoutIsStored() {
  TeditorFixture f;
  writeBytes(f.folder / "e.ini", "[EDITGRID]\nCOL_0_WIDTH=44\nSORTCOL=1\nSORTASC=0\n");
  f.open();
  QCOMPARE(f.listed(), QStringLiteral("3 9 2 5 500"));
  QCOMPARE(f.list()->columnWidth(0), 44);
  f.list()->setColumnWidth(0, 55);
  f.list()->setColumnWidth(1, 66);
  f.editor.reset();
  QVERIFY2(f.ini().contains("COL_0_WIDTH=55\nSORTCOL=1\nSORTASC=0\nCOL_1_WIDTH=66\n"), f.ini().constData());
}

void TdialogTest::hostMayGoFirst() {
  TeditorFixture f;
  const QPointer<TfrmEqRecEditor> editor(
      new TfrmEqRecEditor(*f.browser, TiniFile(f.folder / "e.ini"), f.browser.get()));
  editor->showRecord(0);
  QTimer timer;
  connect(&timer, &QTimer::timeout, f.browser.get(), [&f] { f.browser.reset(); });
  timer.start(0);
  editor->exec();
  QVERIFY(editor.isNull());
  QVERIFY(f.ini().contains("SORTCOL=0"));
}

#include "dialogTest.moc"
