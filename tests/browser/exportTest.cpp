#include <QAbstractItemView>
#include <QFileDialog>
#include <QTest>

#include "browser/frameFixture.h"
#include "browser/spreadsheetExport.h"
#include "tools/recordChanges.h"
#include "tools/testList.h"

namespace {

/// Confirms the dialog with that name in the fixture's folder.
TdialogSteps saveAs(const TframeFixture& f, const QString& name) {
  return whenOpen("SaveDialogExport", [&f, name](QWidget* dialog) {
    // What is selected in the list goes before what was typed.
    control<QAbstractItemView>(dialog, "listView")->selectionModel()->clear();
    control(dialog, "fileNameEdit")->setProperty("text", nameOf(f.folder / name.toStdString()));
    QMetaObject::invokeMethod(dialog, "accept");
  });
}

void exportAs(const TframeFixture& f) {
  f.frame->activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(f.frame.get()));
  f.press(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
}

const QByteArray headings =
    "\xEF\xBB\xBF"
    "Control Number,Description,Manufacturer,Model,Test Procedure,Custom 1,Custom 2,Custom 3\r\n";

}  // namespace

/// The export under a name of the user's choice.
class TexportTest : public QObject {
  Q_OBJECT
 private slots:
  void fileIsAsSpreadsheetsReadIt() {
    const TtestFolder folder;
    TequipRecTable table;
    append(table, makeRecord({"not exported"}));
    append(table, makeRecord({"a,b", " 5\" \x80\x81\xE9", "\x93q\x94", "tab\tin", "x\ry", "", "end "}));
    append(table, makeRecord({"", "c"}));
    const auto file = folder / "list.csv";
    Toutcome outcome = writeSpreadsheet(diskFileSystem(), file, table, {2, 1}, {"Room", "MODEL", "5\" & more"});
    QVERIFY(outcome);
    QCOMPARE(bytesOf(file).constData(),
             "\xEF\xBB\xBF"
             "Control Number,Description,Manufacturer,Model,Test Procedure,Room,Custom 2,\"5\"\" & more\"\r\n"
             ",c,,,1,,,\r\n"
             "\"a,b\",\" 5\"\" \u20AC\u0081\u00E9\",\u201Cq\u201D,tab\tin,1,\"x\ry\",,\"end \"\r\n");
    outcome = writeSpreadsheet(diskFileSystem(), folder / "none/list.csv", table, {0}, {});
    QVERIFY(!outcome && !outcome.failure().reason.empty());
    QCOMPARE(namesIn(folder.path()), {"list.csv"});
  }

  void userChoosesNameAndRecords() {
    TopenFrame f("[CUSTOMFIELDS]\nFIELD1NAME=Model\n");
    f.pressHeading(1);
    saveAs(f, QStringLiteral("mine")).during([&] { exportAs(f); });
    QCOMPARE(bytesOf(f.folder / "mine.csv"), headings + "a,same,,,2,,,\r\nb,Alone \u20AC,,,3,,,\r\nc,same,,,1,,,\r\n");
    f.press(Qt::Key_Down, Qt::ShiftModifier);
    whenOpen("SaveDialogExport", [&](QWidget* dialog) {
      auto* save = qobject_cast<QFileDialog*>(dialog);
      QCOMPARE(save->selectedFiles().value(0), nameOf(f.folder / "mine.csv"));
      save->close();
    }).during([&] {
      f.messages.answer = QMessageBox::No;
      exportAs(f);
    });
    QCOMPARE(f.messages.informativeText, QStringLiteral("2 of 3 records are selected."));
    f.messages.answer = QMessageBox::Cancel;
    exportAs(f);
    f.messages.answer = QMessageBox::Yes;
    saveAs(f, QStringLiteral("two.txt")).during([&] { exportAs(f); });
    QCOMPARE(bytesOf(f.folder / "two.txt"), headings + "a,same,,,2,,,\r\nb,Alone \u20AC,,,3,,,\r\n");
    f.search("txtModelSearch", QStringLiteral("nowhere"));
    exportAs(f);
    QCOMPARE(f.messages.takeCaptions(),
             QByteArrayList({"Export Records?", "Export Records?", "Export Records?", "No Data"}));
  }

  void failureIsTold() {
    TopenFrame f("[EXPORT]\nFILENAME=/no/such/folder/old.csv\n");
    const auto folder = f.folder / "gone";
    std::filesystem::create_directory(folder);
    whenOpen("SaveDialogExport", [&](QWidget* dialog) {
      QCOMPARE(control(dialog, "fileNameEdit")->property("text").toString(), QStringLiteral("old.csv"));
      control(dialog, "fileNameEdit")->setProperty("text", nameOf(folder / "a.csv"));
      QMetaObject::invokeMethod(dialog, "accept");
      std::filesystem::remove(folder);
    }).during([&] { exportAs(f); });
    QCOMPARE(f.messages.takeCaptions(), {"Error"});
    QVERIFY(f.messages.informativeText.contains(QStringLiteral("a.csv\n")));
    QVERIFY(f.ini().contains("old.csv"));
  }
};
EQREC_TEST(TexportTest);

#include "exportTest.moc"
