#include <QLabel>
#include <QTest>

#include "browser/frameFixture.h"
#include "browser/statusText.h"
#include "tools/testList.h"

/// What the frame says of the list and of what happens to it.
class TstatusTest : public QObject {
  Q_OBJECT
 private slots:
  void lineSaysWhereTheUserStands() {
    const std::initializer_list<std::pair<Tstatus, const char*>> cases = {
        {{1, 1}, "1 record"},
        {{240, 240, false, 1}, "240 records"},
        {{240, 240, true}, "240 of 240 records match"},
        {{240, 51, false, 3}, "51 of 240 records match \u00B7 3 selected"},
        {{1, 0, true}, "0 of 1 record matches. Press Clear to see all."},
        {{240, 51, true, 3, QStringLiteral("12 records deleted")},
         "51 of 240 records match \u00B7 3 selected \u00B7 12 records deleted"}};
    for (const auto& [status, expected] : cases) QCOMPARE(statusText(status), QString::fromUtf8(expected));
    QVERIFY(emptyGridText({0, 0}).startsWith(QStringLiteral("No records yet.")));
    QCOMPARE(emptyGridText({2, 0, true}), QStringLiteral("0 of 2 records match. Press Clear to see all."));
    QCOMPARE(emptyGridText({2, 1, true}), QString());
  }

  void commandsSayWhatTheyDid() {
    TopenFrame f;
    const auto status = [&] { return f.control<QLabel>("lblStatus")->text(); };
    f.press(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(status(), QStringLiteral("3 records \u00B7 2 selected"));
    f.click("btnCopy");
    QCOMPARE(status(), QStringLiteral("5 records \u00B7 2 selected \u00B7 2 records copied"));
    f.messages.answer = QMessageBox::Yes;
    f.click("btnDelete");
    QCOMPARE(status(), QStringLiteral("3 records \u00B7 2 records deleted"));
    f.click("btnUndo");
    QCOMPARE(status(), QStringLiteral("5 records \u00B7 2 selected \u00B7 Undone: the deletion of 2 records"));
    f.click("btnExport");
    QVERIFY(status().contains(QStringLiteral("Exported 5 records to ")) && status().endsWith(u"export.csv"));
    f.search("txtDescSearch", QStringLiteral("alone"));
    QCOMPARE(status(), QStringLiteral("1 of 5 records match"));
    f.grid()->setFocus();
    f.grid()->selectRow(0);
    whenOpen("TfrmEqRecEditor", [](QWidget* editor) {
      QTest::keyClicks(editor->focusWidget(), QStringLiteral("2"));
      click(editor, "btnOk");
    }).during([&] { f.press(Qt::Key_Return); });
    QCOMPARE(status(), QStringLiteral("1 of 5 records match \u00B7 Record 3 changed"));
  }

  void searchSelectsItsFirstHit() {
    TopenFrame f;
    f.pressHeading(1);
    QTest::keyClicks(f.control("txtDescSearch"), QStringLiteral("same"));
    f.control("txtDescSearch")->setFocus();
    f.press(Qt::Key_Return);
    QCOMPARE(f.column(1), QStringLiteral("a c"));
    QCOMPARE(f.selectedRows(), QList<int>({0}));
    QCOMPARE(f.control("txtDescSearch")->selectedText(), QStringLiteral("same"));
    f.grid()->setFocus();
    f.press(Qt::Key_Down);
    f.click("btnClearSearch");
    QCOMPARE(f.column(1), QStringLiteral("a b c"));
    QCOMPARE(f.selectedRows(), QList<int>({2}));
  }

  void hiddenColumnIsNamed() {
    TframeFixture f;
    f.writeIni("[CUSTOMFIELDS]\nFIELD2NAME=Ward\n");
    writeRecords(f.folder.path(), {"c"}, {"x"});
    writeBytes(f.folder / "DATA/eqinfo.dat", "\"c\",\"x\",\"\",\"\",\"\",\"x 24\x94\",\"\"\n");
    f.open();
    f.search("txtGeneralSearch", QStringLiteral("24\""));
    QCOMPARE(f.control<QLabel>("lblStatus")->text(),
             QStringLiteral("1 of 1 record matches \u00B7 Found in Ward, which is not shown"));
    f.search("txtGeneralSearch", QStringLiteral("x"));  // also in the description
    QCOMPARE(f.control<QLabel>("lblStatus")->text(), QStringLiteral("1 of 1 record matches"));
  }

  void longTextDoesNotWidenTheFrame() {
    TopenFrame f;
    f.search("txtDescSearch", QStringLiteral("nowhere"));
    QCOMPARE(f.control("txtDescSearch")->selectedText(), QStringLiteral("nowhere"));
    auto* label = f.control<QLabel>("lblStatus");
    QTRY_VERIFY(label->toolTip().isEmpty());  // the layout gives it room
    const int width = f.frame->minimumSizeHint().width();
    label->resize(100, label->height());
    QCOMPARE(label->toolTip(), label->text());
    QCOMPARE(label->accessibleName(), label->text());
    QCOMPARE(f.frame->minimumSizeHint().width(), width);
  }
};
EQREC_TEST(TstatusTest);

#include "statusTest.moc"
