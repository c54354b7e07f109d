#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QTest>

#include "browser/frameFixture.h"
#include "browser/optionsForm.h"
#include "browser/shortcuts.h"
#include "support/iniFile.h"
#include "tools/testList.h"

namespace {

/// Takes all keys for itself, as edits of some systems do with Ctrl+U and the like.
class TgreedyEdit final : public QLineEdit {
 public:
  using QLineEdit::QLineEdit;
  bool event(QEvent* event) override {
    event->accept();
    return event->type() == QEvent::ShortcutOverride || QLineEdit::event(event);
  }
};

void type(QWidget* control, const char* text) {
  QTest::keyClicks(control, QString::fromLatin1(text));
}

}  // namespace

/// The frame's commands, given by keys and clicks.
class TcommandsTest : public QObject {
  Q_OBJECT
 private slots:
  void searchNarrowsUntilCleared() {
    TopenFrame f;
    f.press(Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(f.frame->focusWidget(), f.control("txtGeneralSearch"));
    f.control("txtDescSearch")->setFocus();
    f.press(Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(f.frame->focusWidget(), f.control("txtGeneralSearch"));
    type(f.control("txtDescSearch"), " SAME ");
    QTest::keyClick(f.control("txtDescSearch"), Qt::Key_Return);
    QCOMPARE(f.column(1), QStringLiteral("c a"));
    f.search("txtDescSearch", QString(QChar(0x4E2D)));  // no record can hold it
    QCOMPARE(f.column(1), QString());
    f.click("btnClearSearch");
    QCOMPARE(f.column(1), QStringLiteral("c a b"));
    QVERIFY(f.control("txtDescSearch")->text().isEmpty());
  }

  void deleteKeyAsksThenDeletes() {
    TopenFrame f;
    QTest::keyRelease(f.grid(), Qt::Key_Delete);  // the key went down in another control
    QCOMPARE(f.messages.takeCaptions(), {});
    f.press(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(f.selectedRows(), QList<int>({0, 1, 2}));
    f.press(Qt::Key_Home, Qt::ControlModifier);
    f.press(Qt::Key_Down, Qt::ShiftModifier);
    f.messages.answer = QMessageBox::No;
    f.press(Qt::Key_Delete);
    QCOMPARE(f.column(1), QStringLiteral("c a b"));
    f.messages.answer = QMessageBox::Yes;
    f.press(Qt::Key_Delete);
    QCOMPARE(f.messages.takeCaptions(), QByteArrayList({"Delete Records?", "Delete Records?"}));
    QCOMPARE(f.column(1), QStringLiteral("b"));
    QCOMPARE(f.column(0), QStringLiteral("1"));
    QCOMPARE(f.selectedRows(), QList<int>({0}));
    f.press(Qt::Key_Delete);
    f.press(Qt::Key_Delete);  // the list is empty now, so nothing is asked
    QCOMPARE(f.messages.takeCaptions().size(), 1);
    f.click("BtnExit");
    QCOMPARE(f.data(), "");
  }

  void heldKeyIsOnePress() {
    TopenFrame f;
    const auto send = [&](QEvent::Type type, bool isRepeated) {
      QKeyEvent key(type, Qt::Key_Delete, Qt::NoModifier, {}, isRepeated);
      QCoreApplication::sendEvent(f.grid(), &key);
    };
    for (const bool isRepeated : {false, true, true}) {
      send(QEvent::KeyPress, isRepeated);
      send(QEvent::KeyRelease, true);
    }
    QCOMPARE(f.messages.takeCaptions(), {});
    send(QEvent::KeyRelease, false);
    QCOMPARE(f.messages.takeCaptions(), QByteArrayList{"Delete Records?"});
  }

  void tabGoesThroughTheFrameInOrder() {
    TopenFrame f;
    QCOMPARE(tabOrder(f.frame.get()),
             QStringLiteral("tblEqRec btnAdd btnCopy btnDelete btnExport btnOptions btnPrint BtnUpload btnImport "
                            "BtnHelp BtnExit txtDescSearch txtManufacturerSearch txtModelSearch txtGeneralSearch "
                            "btnSearch btnClearSearch"));
  }

  void cancelledImportLeavesTheSearch() {
    TopenFrame f;
    f.search("txtDescSearch", QStringLiteral("alone"));
    whenOpen("TEquipRecImportOptions", [](QWidget* form) { click(form, "BtnCancel"); }).during([&] {
      f.click("btnImport");
    });
    QCOMPARE(f.column(1) + f.control("txtDescSearch")->text(), QStringLiteral("balone"));
  }

  void copySelectsTheCopies() {
    TopenFrame f;
    f.press(Qt::Key_Down, Qt::ShiftModifier);
    f.press(Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(f.column(1), QStringLiteral("c a b  "));
    QCOMPARE(f.column(2), QStringLiteral("same same Alone \u20AC same same"));
    QCOMPARE(f.column(5), QStringLiteral("1 2 3 1 2"));
    QCOMPARE(f.selectedRows(), QList<int>({3, 4}));
    f.control<QWidget>("btnUndo")->setFocus();
    f.press(Qt::Key_Space);
    QVERIFY(f.grid()->hasFocus());
  }

  void undoAndRedoSelectWhatTheyTouched() {
    TopenFrame f;
    const auto tip = [&](const char* button) { return f.control<QWidget>(button)->toolTip(); };
    f.messages.answer = QMessageBox::Yes;
    f.press(Qt::Key_Down, Qt::ShiftModifier);
    f.press(Qt::Key_Delete);
    QCOMPARE(f.messages.informativeText, QStringLiteral("2 records"));
    f.press(Qt::Key_Delete);
    QCOMPARE(f.messages.informativeText, QStringLiteral("1 record"));
    QCOMPARE(tip("btnUndo"), QStringLiteral("Undo the deletion of a record (Ctrl+Z)"));
    f.click("btnUndo");
    QCOMPARE(tip("btnUndo"), QStringLiteral("Undo the deletion of 2 records (Ctrl+Z)"));
    QCOMPARE(tip("btnRedo"), QStringLiteral("Redo the deletion of a record (Ctrl+Y)"));
    f.search("txtDescSearch", QStringLiteral("alone"));
    f.grid()->setFocus();
    f.press(Qt::Key_Z, Qt::ControlModifier);  // the search would hide both records
    QCOMPARE(f.column(1) + f.control("txtDescSearch")->text(), QStringLiteral("c a b"));
    QCOMPARE(f.selectedRows(), QList<int>({0, 1}));
    QVERIFY(!f.control<QWidget>("btnUndo")->isEnabled() && f.grid()->hasFocus());
    f.press(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(f.column(1), QStringLiteral("b"));
    QCOMPARE(f.selectedRows(), QList<int>({0}));
    f.press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(f.column(1), QString());
    QVERIFY(!f.control<QWidget>("btnRedo")->isEnabled());
  }

  void newIsOneStepAndEachStoreToo() {
    TopenFrame f;
    const auto undoTip = [&] { return f.control<QWidget>("btnUndo")->toolTip(); };
    f.press(Qt::Key_End, Qt::ControlModifier);
    whenOpen("TfrmEqRecEditor", [](QWidget* editor) {
      type(editor->focusWidget(), "NEW-1");
      click(editor, "btnPrev");  // stores into the new record
      type(editor->focusWidget(), "2");
      click(editor, "btnNext");  // changes another one
      click(editor, "btnPrev");  // changes nothing
      click(editor, "btnOk");
    }).during([&] { f.click("btnAdd"); });
    QCOMPARE(f.column(1), QStringLiteral("c a 2b NEW-1"));
    QCOMPARE(undoTip(), QStringLiteral("Undo the addition of a record (Ctrl+Z)"));
    f.click("btnUndo");
    QCOMPARE(f.column(1), QStringLiteral("c a 2b"));
    QCOMPARE(undoTip(), QStringLiteral("Undo the change of a record (Ctrl+Z)"));
    f.click("btnUndo");
    QCOMPARE(f.column(1), QStringLiteral("c a b"));
    QCOMPARE(undoTip(), QStringLiteral("Nothing to undo (Ctrl+Z)"));
    f.click("btnRedo");
    f.click("btnRedo");
    QCOMPARE(f.selectedRows(), QList<int>({3}));
    whenOpen("TfrmEqRecEditor", [&](QWidget* editor) {
      f.control("txtDescSearch")->setFocus();
      f.click("btnUndo");  // does nothing while an editor is open
      click(editor, "btnPrev");
      click(editor, "btnCancel");
    }).during([&] { f.press(Qt::Key_Return); });
    QCOMPARE(f.column(1), QStringLiteral("c a 2b NEW-1"));
    QCOMPARE(f.selectedRows(), QList<int>({2}));
    QCOMPARE(f.frame->focusWidget(), f.grid());
  }

  void searchBoxKeepsItsOwnUndo() {
    TopenFrame f;
    f.click("btnCopy");
    f.control("txtModelSearch")->setFocus();
    type(f.control("txtModelSearch"), "x");
    f.press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(f.control("txtModelSearch")->text(), QString());
    f.press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(f.column(1), QStringLiteral("c a b "));
    f.click("btnUndo");
    f.control("txtModelSearch")->setFocus();
    f.press(Qt::Key_Y, Qt::ControlModifier);
    f.press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(f.control("txtModelSearch")->text(), QStringLiteral("x"));
    QCOMPARE(f.column(1), QStringLiteral("c a b"));
  }

  void shortcutsWorkInEveryEdit() {
    QWidget window;
    auto* edit = new TgreedyEdit(&window);
    int calls = 0;
    (new Tshortcuts(&window))->add(Qt::CTRL | Qt::Key_U, &window, [&] { ++calls; });
    window.show();
    edit->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(window.windowHandle(), Qt::Key_U, Qt::ControlModifier);
    QCOMPARE(calls, 1);
  }

  void cancelledNewRecordGoes() {
    TopenFrame f;
    type(f.control("txtDescSearch"), "alone");
    f.click("btnSearch");
    whenOpen("TfrmEqRecEditor", [](QWidget* editor) { QTest::keyClick(editor, Qt::Key_Escape); }).during([&] {
      f.click("btnAdd");
    });
    QCOMPARE(f.column(1), QStringLiteral("c a b"));
    QVERIFY(!f.control<QWidget>("btnUndo")->isEnabled());
  }

  void fullListTakesNoMore() {
    TframeFixture f;
    const QByteArrayList texts(18431, "x");
    writeRecords(f.folder.path(), texts, texts);
    f.open();
    f.press(Qt::Key_Down, Qt::ShiftModifier);
    f.click("btnCopy");
    QCOMPARE(f.grid()->model()->rowCount(), 18431);
    f.press(Qt::Key_Down);
    f.click("btnCopy");
    QCOMPARE(f.grid()->model()->rowCount(), 18432);
    f.click("btnAdd");
    QCOMPARE(f.messages.takeCaptions(), QByteArrayList({"Too Many Equipment Records", "Too Many Equipment Records"}));
  }

  void optionsShowEachSetting() {
    const std::initializer_list<const char*> names = {"Description", "Manufacturer", "Model",  "Title",
                                                      "Custom1",     "Custom2",      "Custom3"};
    for (const QByteArray shown : names) {
      const TtestFolder folder;
      QByteArray ini = "[DISPLAY]\n";
      for (const QByteArray name : names) ini += name.toUpper() + (name == shown ? "=1\n" : "=0\n");
      writeBytes(folder / "e.ini", ini);
      const TfrmOptions form(TiniFile(folder / "e.ini"), nullptr);
      for (const QByteArray name : names) {
        QCOMPARE(control<QCheckBox>(&form, ("chk" + name).constData())->isChecked(), name == shown);
      }
    }
  }

  void optionsChangeColumns() {
    TopenFrame f("[GRID]\nSORTCOL=6\nSORTASC=0\nCOL_2_WIDTH=140\n");
    const QByteArray before = f.ini();
    whenOpen("TfrmOptions", [](QWidget* options) {
      click(options, "chkModel");
      click(options, "btnCancel");
    }).during([&] { f.click("btnOptions"); });
    QCOMPARE(f.ini(), before);
    f.grid()->setColumnWidth(1, 99);
    whenOpen("TfrmOptions", [](QWidget* options) {
      click(options, "chkDescription");
      click(options, "chkCustom2");
      control<QLineEdit>(options, "txtCustom2")->clear();
      type(control<QLineEdit>(options, "txtCustom2"), "R&D");
      QCOMPARE(control<QCheckBox>(options, "chkCustom2")->text(), QStringLiteral("R&D"));
      control<QLineEdit>(options, "txtCustom1")->clear();
      QApplication::clipboard()->setText(QStringLiteral("a\nTITLE=0"));
      control<QLineEdit>(options, "txtCustom1")->paste();
      click(options, "btnOK");
    }).during([&] { f.click("btnOptions"); });
    whenOpen("TfrmOptions", [](QWidget* options) {
      QCOMPARE(control<QCheckBox>(options, "chkCustom1")->text(), QString());
      click(options, "btnCancel");
    }).during([&] { f.click("btnOptions"); });
    QStringList headings;
    for (int column = 0; column < f.grid()->model()->columnCount(); ++column) {
      headings << f.grid()->model()->headerData(column, Qt::Horizontal).toString();
    }
    QCOMPARE(headings.join(u'|'),
             QStringLiteral("No.|Control Number|Manufacturer|Model|Test Procedure|Test Procedure Title|R&D"));
    QCOMPARE(f.grid()->columnWidth(1), 99);
    QCOMPARE(f.grid()->columnWidth(2), 140);
    f.click("BtnExit");
    for (const char* line : {"DESCRIPTION=0\n", "CUSTOM2=1\n", "FIELD1NAME=\n", "FIELD2NAME=R&D\n", "SORTCOL=5\n"}) {
      QVERIFY2(f.ini().contains(line), line);
    }
  }

  void exportSaysWhatWentWrong() {
    TopenFrame f;
    f.pressHeading(1);
    f.control("txtModelSearch")->setFocus();
    f.press(Qt::Key_E, Qt::ControlModifier);  // Ctrl+E means "end of line" in some edits
    QVERIFY(bytesOf(f.folder / "export.csv").contains("\n1,a,same,"));
    f.search("txtModelSearch", QStringLiteral("nowhere"));
    f.press(Qt::Key_E, Qt::ControlModifier);
    std::filesystem::remove(f.folder / "export.csv");
    std::filesystem::create_directory(f.folder / "export.csv");
    f.press(Qt::Key_E, Qt::ControlModifier);
    QCOMPARE(f.messages.takeCaptions(), QByteArrayList({"No Data", "Error"}));
  }

  void printTakesViewSelectionAndCaptions() {
    TopenFrame f("[CUSTOMFIELDS]\nFIELD1NAME=Ward\n");
    f.pressHeading(1);
    f.press(Qt::Key_Down, Qt::ShiftModifier);
    whenOpen("TEquipRecPrint", [](QWidget* print) {
      QCOMPARE(control<QAbstractButton>(print, "radAll")->text(), QStringLiteral("All records shown (3)"));
      QCOMPARE(control<QAbstractButton>(print, "radSelected")->text(), QStringLiteral("Selected records (2)"));
      QCOMPARE(control<QAbstractButton>(print, "chkCustom1")->text(), QStringLiteral("Ward"));
      click(print, "btnCancel");
    }).during([&] { f.press(Qt::Key_P, Qt::ControlModifier); });
    f.search("txtModelSearch", QStringLiteral("nowhere"));
    f.click("btnPrint");
    f.click("BtnUpload");
    QCOMPARE(f.messages.takeCaptions(),
             QByteArrayList({"No Equipment Records To Print", "No Equipment Records To Upload"}));
  }
};
EQREC_TEST(TcommandsTest);

#include "commandsTest.moc"
