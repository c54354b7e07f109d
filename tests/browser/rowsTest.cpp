#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QTableView>
#include <QTest>

#include "browser/changeForm.h"
#include "browser/frameFixture.h"
#include "testproc/autosequenceFileStructs.h"
#include "tools/recordChanges.h"
#include "tools/testList.h"

/// What the user does with several rows at once.
class TrowsTest : public QObject {
  Q_OBJECT
 private slots:
  void changeIsOneStepForAll() {
    TframeFixture f;
    writeBytes(f.folder / "EquipmentRecord.ini", "[CUSTOMFIELDS]\nFIELD2NAME=Ward\n[DISPLAY]\nCUSTOM2=1\n");
    f.open();
    f.press(Qt::Key_Down, Qt::ShiftModifier);
    whenOpen("TfrmChange", [](QWidget* form) {
      QCOMPARE(control<QLabel>(form, "lblCount")->text(), QStringLiteral("All 2 selected records get:"));
      auto* field = control<QComboBox>(form, "cbField");
      QCOMPARE(field->findText(QStringLiteral("Control Number")), -1);
      field->setCurrentText(QStringLiteral("Ward"));
      QTest::keyClicks(control(form, "txtValue"), QStringLiteral(" North "));
      QTest::keyClick(form, Qt::Key_Return);
    }).during([&] { f.press(Qt::Key_R, Qt::ControlModifier); });
    QCOMPARE(f.column(7), QStringLiteral("North North "));
    QCOMPARE(f.selectedRows(), QList<int>({0, 1}));
    QCOMPARE(f.control<QLabel>("lblStatus")->text(),
             QStringLiteral("3 records \u00B7 2 selected \u00B7 2 records changed"));
    QCOMPARE(f.control<QWidget>("btnUndo")->toolTip(), QStringLiteral("Undo the change of 2 records (Ctrl+Z)"));
    f.click("btnUndo");
    QCOMPARE(f.column(7), QStringLiteral("  "));
  }

  void testProcedureComesFromTheList() {
    TtestProcTable titles;
    titles.set(2, "Pump");
    titles.set(7, "Hospital bed");
    TfrmChange form(2, titles, defaultCaptions(), nullptr);
    control<QComboBox>(&form, "cbField")->setCurrentText(QStringLiteral("Manufacturer"));
    QTest::keyClicks(control(&form, "txtValue"), QString(100, u'x'));
    QCOMPARE(form.assignment().text.size(), textField(fieldManufacturer).size - 1);
    control<QComboBox>(&form, "cbField")->setCurrentText(QStringLiteral("Test Procedure"));
    auto* list = control<QTableView>(&form, "lstTestProc");
    QCOMPARE(list->model()->rowCount(), 2);
    QVERIFY(!control(&form, "btnOK")->isEnabled());
    QTest::keyClicks(control(&form, "txtTestProcSearch"), QStringLiteral("BED"));
    QCOMPARE(list->model()->rowCount(), 1);
    list->selectRow(0);
    QVERIFY(control(&form, "btnOK")->isEnabled());
    TrecordList records;
    records.setRecords(TequipRecTable({makeRecord({"a"}, 1), makeRecord({"b"}, 7), makeRecord({"c"}, 3)}));
    records.clearSearch();
    QCOMPARE(records.assign({0, 1}, form.assignment()), std::size_t{1});  // one has it already
    QCOMPARE(records.records().at(0).testProc(), 7U);
    QCOMPARE(records.records().at(2).testProc(), 3U);
  }

  void menuOffersWhatTheSelectionAllows() {
    TopenFrame f;
    const auto offered = [&] {
      emit f.grid()->customContextMenuRequested(QPoint(5, 5));
      auto* menu = f.frame->findChild<QMenu*>(QStringLiteral("mnuRows"));
      QStringList names;
      for (const QAction* action : menu->actions()) {
        if (action->isEnabled() && !action->isSeparator()) names << action->objectName().mid(3);
      }
      const std::unique_ptr<QMenu> closed(menu);
      return names.join(u' ');
    };
    QCOMPARE(offered(), QStringLiteral("New Edit Change Copy Delete CopyRows ExportAs"));
    f.press(Qt::Key_Down, Qt::ShiftModifier);
    f.click("btnCopy");
    QCOMPARE(offered(), QStringLiteral("New Change Copy Delete Undo CopyRows ExportAs"));
    f.search("txtDescSearch", QStringLiteral("nowhere"));
    QCOMPARE(offered(), QStringLiteral("New Undo"));
    f.press(Qt::Key_R, Qt::ControlModifier);  // no dialog opens
  }

  void rowsGoToASpreadsheet() {
    TframeFixture f;
    writeRecords(f.folder.path(), {"c", "a"}, {"x\ty", "z"});
    f.open();
    f.press(Qt::Key_A, Qt::ControlModifier);
    f.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(),
             QStringLiteral("No.\tControl Number\tDescription\tManufacturer\tModel\tTest Procedure\t"
                            "Test Procedure Title\n1\tc\tx y\t\t\t1\t\n2\ta\tz\t\t\t2\t\n"));
    f.control("txtDescSearch")->setText(QStringLiteral("box"));
    f.control("txtDescSearch")->setFocus();
    f.control("txtDescSearch")->selectAll();
    f.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("box"));
  }
};
EQREC_TEST(TrowsTest);

#include "rowsTest.moc"
