#include <QCheckBox>
#include <QLineEdit>
#include <QTest>

#include "browser/frameFixture.h"
#include "tools/testList.h"
#include "tools/whenOpen.h"

/// The frame's commands as a user gives them, by keys and clicks.
class TcommandsTest : public QObject {
  Q_OBJECT
 private slots:
  void searchNarrowsUntilCleared();
  void deleteKeyAsksThenDeletes();
  void copySelectsTheCopies();
  void newRecordIsEditedAndKept();
  void cancelledNewRecordGoes();
  void fullListTakesNoMore();
  void optionsChangeColumns();
  void exportSaysWhatWentWrong();
  void printTakesViewAndSelection();
  void frameDeletedWhileEditorIsOpen();
};
EQREC_TEST(TcommandsTest);

namespace {

void type(QWidget* control, const char* text) {
  QTest::keyClicks(control, QString::fromLatin1(text));
}

void press(const TframeFixture& f, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QTest::keyClick(f.frame->windowHandle(), key, modifiers);
}

}  // namespace

void TcommandsTest::searchNarrowsUntilCleared() {
  TframeFixture f;
  f.open();
  press(f, Qt::Key_F, Qt::ControlModifier);
  QCOMPARE(f.frame->focusWidget(), f.control<QLineEdit>("txtGeneralSearch"));
  type(f.control<QLineEdit>("txtDescSearch"), " SAME ");
  QTest::keyClick(f.control<QLineEdit>("txtDescSearch"), Qt::Key_Return);
  QCOMPARE(f.column(1), QStringLiteral("c a"));
  f.control<QLineEdit>("txtDescSearch")->setText(QString(QChar(0x4E2D)));  // no record can hold it
  f.control<QAbstractButton>("btnSearch")->click();
  QCOMPARE(f.column(1), QString());
  f.control<QAbstractButton>("btnClearSearch")->click();
  QCOMPARE(f.column(1), QStringLiteral("c a b"));
  QVERIFY(f.control<QLineEdit>("txtDescSearch")->text().isEmpty());
}

void TcommandsTest::deleteKeyAsksThenDeletes() {
  TframeFixture f;
  f.open();
  QTest::keyRelease(f.grid(), Qt::Key_Delete);  // pressed elsewhere
  QCOMPARE(f.messages.takeCaptions(), {});
  press(f, Qt::Key_A, Qt::ControlModifier);
  QCOMPARE(f.selectedRows(), QList<int>({0, 1, 2}));
  press(f, Qt::Key_Home, Qt::ControlModifier);
  press(f, Qt::Key_Down, Qt::ShiftModifier);
  f.messages.answer = QMessageBox::No;
  press(f, Qt::Key_Delete);
  QCOMPARE(f.column(1), QStringLiteral("c a b"));
  f.messages.answer = QMessageBox::Yes;
  press(f, Qt::Key_Delete);
  QCOMPARE(f.messages.takeCaptions(), QByteArrayList({"Delete Records?", "Delete Records?"}));
  QCOMPARE(f.column(1), QStringLiteral("b"));
  QCOMPARE(f.column(0), QStringLiteral("1"));
  QCOMPARE(f.selectedRows(), QList<int>({0}));
  press(f, Qt::Key_Delete);
  press(f, Qt::Key_Delete);  // nothing is left to ask about
  QCOMPARE(f.messages.takeCaptions().size(), 1);
  f.exitButton()->click();
  QCOMPARE(f.data(), "");
}

void TcommandsTest::copySelectsTheCopies() {
  TframeFixture f;
  f.open();
  press(f, Qt::Key_Down, Qt::ShiftModifier);
  press(f, Qt::Key_D, Qt::ControlModifier);
  QCOMPARE(f.column(1), QStringLiteral("c a b  "));
  QCOMPARE(f.column(2), QStringLiteral("same same Alone same same"));
  QCOMPARE(f.selectedRows(), QList<int>({3, 4}));
  QVERIFY(f.grid()->hasFocus());
}

void TcommandsTest::newRecordIsEditedAndKept() {
  TframeFixture f;
  f.open();
  whenOpen("TfrmEqRecEditor", [](QWidget* editor) {
    QTest::keyClicks(editor->focusWidget(), QStringLiteral("NEW-1"));
    QTest::keyClick(editor->focusWidget(), Qt::Key_Return);  // a scanner's last key
    in<QAbstractButton>(editor, "btnOk")->click();
  });
  press(f, Qt::Key_N, Qt::ControlModifier);
  QCOMPARE(f.column(1), QStringLiteral("c a b NEW-1"));
  QCOMPARE(f.selectedRows(), QList<int>({3}));
  whenOpen("TfrmEqRecEditor", [](QWidget* editor) {
    in<QLineEdit>(editor, "txtControlNum")->clear();
    type(in<QLineEdit>(editor, "txtControlNum"), "NEW-2");
    in<QAbstractButton>(editor, "btnPrev")->click();
    in<QAbstractButton>(editor, "btnCancel")->click();
  });
  press(f, Qt::Key_Return);
  QCOMPARE(f.column(1), QStringLiteral("c a b NEW-2"));  // stored by Previous, whatever Cancel says
  QCOMPARE(f.selectedRows(), QList<int>({2}));
  f.exitButton()->click();
  QVERIFY(f.data().endsWith("\"NEW-2\",1\n"));
}

void TcommandsTest::cancelledNewRecordGoes() {
  TframeFixture f;
  f.open();
  type(f.control<QLineEdit>("txtDescSearch"), "alone");
  f.control<QAbstractButton>("btnSearch")->click();
  whenOpen("TfrmEqRecEditor", [](QWidget* editor) { QTest::keyClick(editor, Qt::Key_Escape); });
  f.control<QAbstractButton>("btnAdd")->click();
  QCOMPARE(f.column(1), QStringLiteral("c a b"));
}

void TcommandsTest::fullListTakesNoMore() {
  TframeFixture f;
  const QByteArrayList texts(18431, "x");
  writeRecords(f.folder.path(), texts, texts);
  f.open();
  press(f, Qt::Key_Down, Qt::ShiftModifier);
  f.control<QAbstractButton>("btnCopy")->click();
  QCOMPARE(f.grid()->model()->rowCount(), 18431);
  press(f, Qt::Key_Down);
  f.control<QAbstractButton>("btnCopy")->click();
  QCOMPARE(f.grid()->model()->rowCount(), 18432);
  f.control<QAbstractButton>("btnAdd")->click();
  QCOMPARE(f.messages.takeCaptions(), QByteArrayList({"Too Many Equipment Records", "Too Many Equipment Records"}));
}

void TcommandsTest::optionsChangeColumns() {
  TframeFixture f;
  f.writeIni("[GRID]\nSORTCOL=6\nSORTASC=0\nCOL_2_WIDTH=140\n");
  const QByteArray before = f.ini();
  f.open();
  whenOpen("TfrmOptions", [](QWidget* options) {
    in<QCheckBox>(options, "chkModel")->click();
    in<QAbstractButton>(options, "btnCancel")->click();
  });
  f.control<QAbstractButton>("btnOptions")->click();
  QCOMPARE(f.ini(), before);
  whenOpen("TfrmOptions", [](QWidget* options) {
    in<QCheckBox>(options, "chkDescription")->click();
    in<QCheckBox>(options, "chkCustom2")->click();
    in<QLineEdit>(options, "txtCustom2")->clear();
    type(in<QLineEdit>(options, "txtCustom2"), "R&D");
    QCOMPARE(in<QCheckBox>(options, "chkCustom2")->text(), QStringLiteral("R&D"));
    in<QLineEdit>(options, "txtCustom1")->clear();
    in<QAbstractButton>(options, "btnOK")->click();
  });
  f.control<QAbstractButton>("btnOptions")->click();
  QCOMPARE(f.grid()->model()->columnCount(), 7);
  QCOMPARE(f.grid()->model()->headerData(6, Qt::Horizontal).toString(), QStringLiteral("R&D"));
  QCOMPARE(f.grid()->columnWidth(2), 140);
  f.exitButton()->click();
  for (const char* line : {"DESCRIPTION=0\n", "CUSTOM2=1\n", "FIELD1NAME=\n", "FIELD2NAME=R&D\n", "SORTCOL=5\n"}) {
    QVERIFY2(f.ini().contains(line), line);
  }
}

void TcommandsTest::exportSaysWhatWentWrong() {
  TframeFixture f;
  f.open();
  f.pressHeading(1);
  f.control<QLineEdit>("txtModelSearch")->setFocus();
  press(f, Qt::Key_E, Qt::ControlModifier);  // an edit's own "to the end of the line" elsewhere
  QVERIFY(bytesOf(f.folder / "export.csv").contains("\n1,a,same,"));
  f.control<QLineEdit>("txtModelSearch")->setText(QStringLiteral("nowhere"));
  f.control<QAbstractButton>("btnSearch")->click();
  press(f, Qt::Key_E, Qt::ControlModifier);
  std::filesystem::remove(f.folder / "export.csv");
  std::filesystem::create_directory(f.folder / "export.csv");
  press(f, Qt::Key_E, Qt::ControlModifier);
  QCOMPARE(f.messages.takeCaptions(), QByteArrayList({"No Data", "Error"}));
}

void TcommandsTest::printTakesViewAndSelection() {
  TframeFixture f;
  f.open();
  f.pressHeading(1);
  press(f, Qt::Key_Down, Qt::ShiftModifier);
  whenOpen("TEquipRecPrint", [](QWidget* print) {
    QCOMPARE(in<QAbstractButton>(print, "radAll")->text(), QStringLiteral("All records shown (3)"));
    QCOMPARE(in<QAbstractButton>(print, "radSelected")->text(), QStringLiteral("Selected records (2)"));
    in<QAbstractButton>(print, "btnCancel")->click();
  });
  press(f, Qt::Key_P, Qt::ControlModifier);
  f.control<QLineEdit>("txtModelSearch")->setText(QStringLiteral("nowhere"));
  f.control<QAbstractButton>("btnSearch")->click();
  f.control<QAbstractButton>("btnPrint")->click();
  f.control<QAbstractButton>("BtnUpload")->click();
  QCOMPARE(f.messages.takeCaptions(),
           QByteArrayList({"No Equipment Records To Print", "No Equipment Records To Upload"}));
}

void TcommandsTest::frameDeletedWhileEditorIsOpen() {
  TframeFixture f;
  f.open();
  whenOpen("TfrmEqRecEditor", [&](QWidget*) { f.frame.reset(); });
  press(f, Qt::Key_Return);
  QVERIFY(f.frame == nullptr);
  QVERIFY(f.data().startsWith("\"c\",1\n"));
}

#include "commandsTest.moc"
