#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTest>

#include "import/columnMappingForm.h"
#include "tools/dialogs.h"
#include "tools/messageRecorder.h"
#include "tools/recordChanges.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

/// The texts of a row, with the tooltips of marked cells behind "!".
QByteArray rowOf(const QWidget* form, const char* table, int row) {
  const auto* model = control<QTableView>(form, table)->model();
  QStringList cells;
  for (int column = 0; column < model->columnCount(); ++column) {
    const QModelIndex cell = model->index(row, column);
    const bool isMarked = cell.data(Qt::BackgroundRole).isValid();
    cells << cell.data().toString() + (isMarked ? u'!' + cell.data(Qt::ToolTipRole).toString() : QString());
  }
  return cells.join(u'|').toLatin1();
}

QByteArray headingsOf(const QWidget* form, const char* table) {
  const auto* model = control<QTableView>(form, table)->model();
  QStringList headings;
  for (int column = 0; column < model->columnCount(); ++column) {
    headings << model->headerData(column, Qt::Horizontal).toString();
  }
  return headings.join(u'|').toLatin1();
}

void choose(const QWidget* form, const char* combo, int index) {
  control<QComboBox>(form, combo)->setCurrentIndex(index);
}

/// The mapping dialog for `f.csv`, and a list with the record "a".
struct TmappingFixture {
  explicit TmappingFixture(const QByteArray& content, const QByteArray& settings = {}, int startRow = 1) {
    writeBytes(file, content);
    writeBytes(folder / "e.ini", settings);
    append(list.table, makeRecord({"a"}));
    options.fileName = file;
    options.startRow = startRow;
  }
  std::unique_ptr<TEquipRecImport> open() {
    return std::make_unique<TEquipRecImport>(options, list, TiniFile(folder / "e.ini"), result, nullptr);
  }
  QByteArray settings() const { return linesOf(folder / "e.ini"); }

  TtestFolder folder;
  std::filesystem::path file = folder / "f.csv";
  TimportOptions options;
  TtestList list;
  TimportResult result{};
};

}  // namespace

/// What the user sees before and after an import.
class TresultTest : public QObject {
  Q_OBJECT
 private slots:
  void previewShowsWhatWillArrive() {
    QByteArray content = "Nr,Inventarnummer,x\n<b>,a,7\n" + QByteArray(22, 'm') + ",\xC5\x81,8\n,b,500,y\n";
    content += "m, ,1\n" + QByteArray("m,c,1\n").repeated(20);
    TmappingFixture f(content, "[CUSTOMFIELDS]\nFIELD1NAME=Ward\n[Import]\nDeviceID=1\n", 2);
    const auto form = f.open();
    QCOMPARE(control<QComboBox>(form.get(), "cbDeviceID")->currentIndex(), 2);
    QVERIFY(control(form.get(), "lblHeadings")->isHidden());
    QCOMPARE(control<QLabel>(form.get(), "lblHeadingDeviceID")->text(), QStringLiteral("Inventarnummer"));
    QCOMPARE(control<QComboBox>(form.get(), "cbModel")->itemData(3, Qt::ToolTipRole).toString(), QStringLiteral("x"));
    choose(form.get(), "cbModel", 1);
    choose(form.get(), "cbTestProc", 3);
    QCOMPARE(headingsOf(form.get(), "tblPreview"), "Device ID|Model|Test Procedure Number");
    QCOMPARE(rowOf(form.get(), "tblPreview", 0), "a!This Device ID is in use. You will be asked.|<b>|7");
    choose(form.get(), "ComboBoxKnown", 2);
    QCOMPARE(rowOf(form.get(), "tblPreview", 0), "a!This row updates the record that has this Device ID.|<b>|7");
    const QByteArray cut = QByteArray(21, 'm') + "!Model cut to 21 characters, from \"" + QByteArray(22, 'm') + "\".";
    QCOMPARE(rowOf(form.get(), "tblPreview", 1),
             "L!Device ID: the record cannot hold ? (U+0141). It was replaced.|" + cut + "|8");
    QCOMPARE(rowOf(form.get(), "tblPreview", 2), "b!Other number of fields: 4 instead of 3.||500");
    QCOMPARE(rowOf(form.get(), "tblPreview", 3), "!No Device ID. The row was not imported.||");
    QCOMPARE(rowOf(form.get(), "tblPreview", 5), "c!This row updates the record that has this Device ID.|m|1");
    const auto* model = control<QTableView>(form.get(), "tblPreview")->model();
    form->show();
    const auto* preview = control<QTableView>(form.get(), "tblPreview");
    QVERIFY(preview->rowAt(preview->viewport()->height() - 2) >= 3);  // rows are in sight
    QVERIFY(model->rowCount() == 20 && model->headerData(0, Qt::Vertical).toInt() == 2);
    choose(form.get(), "cbModel", 0);
    QCOMPARE(headingsOf(form.get(), "tblPreview"), "Device ID|Test Procedure Number");
  }

  void onlyWhatTheUserChangedIsStored() {
    const QByteArray stored = "[Import]\nDeviceID=1\nDesc=9\nModel=2\n";
    for (const char* button : {"BtnBack", "BtnCancel"}) {
      TmappingFixture f("a,b, \n", stored);
      auto form = f.open();
      for (const int column : {3, 1}) {  // an empty Device ID is none
        choose(form.get(), "cbDeviceID", column);
        QCOMPARE(control(form.get(), "BtnImport")->isEnabled(), column == 1);
      }
      click(form.get(), button);
      QCOMPARE(f.settings(), stored);
      form = f.open();
      choose(form.get(), "cbModel", 3);
      choose(form.get(), "ComboBoxKnown", 1);
      click(form.get(), button);
      QCOMPARE(f.settings(), "[Import]\nDeviceID=1\nDesc=9\nModel=3\nKnownDevices=1\n");
    }
    TmappingFixture f("a,b,c\n");
    auto form = f.open();
    QVERIFY(control(form.get(), "lblHeadings")->isHidden());
    choose(form.get(), "cbModel", 1);
    click(form.get(), "BtnBack");
    QCOMPARE(f.settings(), "[Import]\nModel=1\n");
    QCOMPARE(f.open()->findChild<QComboBox*>(QStringLiteral("cbModel"))->currentIndex(), 0);
    TmappingFixture headings("ID,Model\na,b\n");
    QVERIFY(!control(headings.open().get(), "lblHeadings")->isHidden());
  }

  void resultIsTold() {
    TmappingFixture f("a,x\nb,x\n,\"y\n123456789012345678,z\n", "[Import]\nDeviceID=1\nDesc=2\nKnownDevices=1\n");
    TmessageRecorder messages;
    const auto form = f.open();
    const auto file = f.folder / "report.csv";
    const auto look = [](QWidget* progress) {
      QCOMPARE(control<QLabel>(progress, "LabelDesc")->text(),
               QStringLiteral("Equipment records imported successfully."));
      QCOMPARE(control<QLabel>(progress, "lblSummary")->text(),
               QStringLiteral("2 added, 1 skipped, 1 without Device ID, 1 with remarks"));
      click(progress, "btnDetails");
    };
    const auto copyAndSave = [](QWidget* report) {
      QCOMPARE(rowOf(report, "tblReport", 2),
               "4|12345678901234567|Device ID cut to 17 characters, from \"123456789012345678\".");
      QTest::keyClick(control(report, "tblReport"), Qt::Key_C, Qt::ControlModifier);
      QCOMPARE(QApplication::clipboard()->text(),
               QStringLiteral("Row\tDevice ID\tRemark\n1\ta\tThis Device ID is in use. The row was skipped.\n"));
      control<QTableView>(report, "tblReport")->clearSelection();
      QTest::keyClick(control(report, "tblReport"), Qt::Key_C, Qt::ControlModifier);
      QCOMPARE(QApplication::clipboard()->text().count(u'\n'), 4);  // all rows
      click(report, "btnSave");
      click(report, "btnSave");
      click(report, "btnClose");
    };
    const auto saveAs = [](const std::filesystem::path& name) {
      return whenOpen("QFileDialog", [name](QWidget* dialog) {
        control<QLineEdit>(dialog, "fileNameEdit")->setText(nameOf(name));
        QMetaObject::invokeMethod(dialog, "accept");
      });
    };
    (whenOpen("TImportProgress", look, "BtnOK") + whenOpen("TfrmImportReport", copyAndSave) +
     saveAs(f.folder / "missing" / "report.csv") + saveAs(file) + clickIn("TImportProgress", "BtnOK"))
        .during([&] { click(form.get(), "BtnImport"); });
    QVERIFY(bytesOf(file).startsWith("\xEF\xBB\xBFRow,Device ID,Remark\r\n1,a,This"));
    QVERIFY(bytesOf(file).endsWith(",\"Device ID cut to 17 characters, from \"\"123456789012345678\"\".\"\r\n"));
    QCOMPARE(messages.takeCaptions(), (QByteArrayList{"Device IDs Truncated", "Error"}));
    QCOMPARE(f.list.table.count(), std::size_t{3});
  }

  void nothingImportedIsSaid() {
    TmappingFixture f("a,x\n", "[Import]\nDeviceID=1\nKnownDevices=1\n");
    const auto form = f.open();
    const auto look = [](QWidget* progress) {
      QCOMPARE(control<QLabel>(progress, "LabelDesc")->text(), QStringLiteral("No equipment records were imported."));
      QCOMPARE(control<QLabel>(progress, "lblSummary")->text(), QStringLiteral("Nothing added, 1 skipped"));
      click(progress, "BtnOK");
    };
    whenOpen("TImportProgress", look, "BtnOK").during([&] { click(form.get(), "BtnImport"); });
    QVERIFY(f.result == TimportResult::imported);
  }
};
EQREC_TEST(TresultTest);

#include "resultTest.moc"
