#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QSpinBox>
#include <QTest>

#include "browser/frameFixture.h"
#include "import/importOptionsForm.h"
#include "store/datastructs.h"
#include "support/log.h"
#include "tools/dialogs.h"
#include "tools/recordChanges.h"
#include "tools/testList.h"

namespace {

QByteArray text(const QWidget* dialog, const char* name) {
  return control(dialog, name)->property("text").toString().toLatin1();
}
TdialogSteps type(const QByteArray& keys) {
  return whenOpen("TEquipRecImportDup", [keys](QWidget* dialog) {
    for (const char key : keys) QTest::keyClick(control(dialog, "EditDeviceID"), key);
  });
}

const TdialogSteps goOn = clickIn("TEquipRecImportOptions", "BtnContinue");
const TdialogSteps firstColumn =
    whenOpen("TEquipRecImport", [](QWidget* form) { control<QComboBox>(form, "cbDeviceID")->setCurrentIndex(1); });
const TdialogSteps runIt = clickIn("TEquipRecImport", "BtnImport");
const TdialogSteps skipIt = clickIn("TEquipRecImportDup", "BtnSkip");
const TdialogSteps cancel = clickIn("TImportProgress", "BtnCancel");
const TdialogSteps confirm = clickIn("TImportProgress", "BtnOK");

/// Imports `f.csv` into a table with one record, "a".
struct TimportFixture {
  TimportFixture() { append(list.table, makeRecord({"a"})); }
  /// Opens the options dialog, does the steps and returns the dialog's result.
  int import(const QByteArray& content, const TdialogSteps& steps) {
    writeBytes(file, content);
    options = new TEquipRecImportOptions(list, TiniFile(folder / "e.ini"), host.get());
    control<QLineEdit>(options, "EditFilename")->setText(name);
    int result = -1;
    steps.during([&] { result = options->exec(); });
    const std::unique_ptr<QDialog> closed(options.data());
    return result;
  }
  QByteArray log() const { return linesOf(folder / "EquipmentRecord.log"); }
  QByteArray ids() const {
    QByteArrayList ids;
    for (TrecordIndex i = 0; i < list.table.count(); ++i) ids << list.table.at(i).text(fieldControlNum);
    return ids.join(' ');
  }

  TtestFolder folder;
  std::filesystem::path file = folder / "f.csv";
  QString name = nameOf(file);
  TmessageRecorder messages;
  TtestList list;
  std::unique_ptr<QWidget> host = std::make_unique<QWidget>();
  QPointer<TEquipRecImportOptions> options;
};

}  // namespace

/// The import as a user goes through its dialogs.
class TdialogsTest : public QObject {
  Q_OBJECT
 private slots:
  void optionsDecideAboutContinue() {
    TimportFixture f;
    const auto choose = [&](QWidget* options) {
      auto* edit = control<QLineEdit>(options, "EditFilename");
      auto* other = control<QLineEdit>(options, "EditDelimiter");
      auto* delimiters = control<QComboBox>(options, "ComboBoxDelimiter");
      const auto offered = [=] { return control(options, "BtnContinue")->isEnabled(); };
      QVERIFY(offered() && !other->isVisible());
      for (const QString& none : {nameOf(f.folder.path()), f.name + u'x', QString()}) {
        edit->setText(none);
        QVERIFY(!offered());
      }
      edit->setText(f.name);
      delimiters->setCurrentIndex(5);
      QVERIFY(!offered() && other->isVisible());
      QTest::keyClicks(other, QStringLiteral("#x"));
      QVERIFY(offered());
      delimiters->setCurrentIndex(2);
      QVERIFY(offered() && !other->isVisible());
      QTest::keyClicks(control<QSpinBox>(options, "SpinEditStartRow"), QStringLiteral("9"));
      QTest::keyClick(control<QSpinBox>(options, "SpinEditStartRow"), Qt::Key_Up);
      QTest::keyClick(options, Qt::Key_Escape);
    };
    QCOMPARE(f.import("", whenOpen("TEquipRecImportOptions", choose)), int{QDialog::Rejected});
    QVERIFY(linesOf(f.folder / "e.ini")
                .endsWith("f.csv\nDelimiter=2\nUserDelimiter=#\nStartRow=2\nQuotes=0\nSpreadsheet=0\nCharset=0\n"));
  }

  void optionsComeBackAndCount() {
    for (const auto& [flags, id] : {std::pair("Quotes=1\nSpreadsheet=0\n", "b,c"),
                                    {"Quotes=0\nSpreadsheet=1\n",
                                     "x \x94"
                                     "b"}}) {
      TimportFixture f;
      const QByteArray kept = "[Import]\nFilename=" + f.name.toLatin1() +
                              "\nDelimiter=5\nUserDelimiter=,\nStartRow=2\n" + flags + "Charset=2\n";
      writeBytes(f.folder / "e.ini", kept);
      QCOMPARE(f.import("\nx \"b,c\" y\n", goOn + firstColumn + runIt + confirm), int{QDialog::Accepted});
      QCOMPARE(f.ids(), QByteArray("a ") + id);
      QVERIFY(linesOf(f.folder / "e.ini").startsWith(kept));
    }
  }

  void importGoesThroughAllDialogs() {
    TimportFixture f;
    writeBytes(f.folder / "e.ini", "[Import]\nStartRow=2\n[CUSTOMFIELDS]\nFIELD2NAME=Ward\n");
    const auto browse = [&](QWidget* options) {
      control<QLineEdit>(options, "EditFilename")->setText(f.name + u'x');
      click(options, "BtnBrowse");
    };
    const auto choose = [&](QWidget* dialog) {
      auto* files = qobject_cast<QFileDialog*>(dialog);
      QCOMPARE(files->directory().path(), nameOf(f.folder.path()));
      files->selectFile(QStringLiteral("f.csv"));
      QMetaObject::invokeMethod(files, "accept");
    };
    const auto look = [&](QWidget* mapping) {
      QCOMPARE(text(mapping, "LabelNumOfColumns"), "Found 3 columns");
      QCOMPARE(text(mapping, "LabelCustom1") + text(mapping, "LabelCustom2"), "Custom 1Ward");
      QCOMPARE(text(mapping, "EditCustom2") + text(mapping, "EditDeviceID"), "wN? 1");
      auto* combo = control<QComboBox>(mapping, "cbDeviceID");
      QCOMPARE(combo->itemText(0) + combo->itemText(3), QStringLiteral("<None>Column 3"));
      combo->setCurrentIndex(0);
      QVERIFY(!control(mapping, "BtnImport")->isEnabled() && text(mapping, "EditDeviceID") == "");
      combo->setCurrentIndex(2);
      control<QComboBox>(mapping, "cbTestProc")->setCurrentIndex(3);
      QVERIFY(!f.options->isVisible());
      click(mapping, "BtnBack");
    };
    const auto steps = whenOpen("TEquipRecImportOptions", browse) + whenOpen("OpenDialogFilename", choose) + goOn +
                       whenOpen("TEquipRecImport", look) + goOn + runIt + confirm;
    QCOMPARE(f.import("WARD,Asset Tag,x\nw,N\" 1,7\nw,12345678901234567890\n", steps), int{QDialog::Accepted});
    QCOMPARE(f.messages.takeCaptions(), QByteArrayList({"Malformed Equipment Records", "Device IDs Truncated"}));
    QCOMPARE(f.ids(), "a N\x94 1 12345678901234567");
    QCOMPARE(f.list.table.at(1).testProc(), 7U);
  }

  void duplicatesAreRenamedOrSkipped() {
    TimportFixture f;
    const auto refuse = [](QWidget* dialog) {
      auto* edit = control<QLineEdit>(dialog, "EditDeviceID");
      QCOMPARE(edit->text(), QStringLiteral("a"));
      edit->selectAll();
      edit->insert(QStringLiteral(" \t\x01\r\n\n"));
      QCOMPARE(edit->text(), QStringLiteral("   "));
      QTest::keyClick(edit, Qt::Key_Return);
      QVERIFY(dialog->isVisible() && !control(dialog, "BtnRename")->isEnabled());
      edit->setText(QStringLiteral("x"));
      click(dialog, "BtnSkip");
    };
    const auto seeProgress = [](QWidget* dialog) {
      QVERIFY(control<QProgressBar>(dialog->parentWidget(), "pbImport")->value() > 0);
    };
    const auto steps = goOn + firstColumn + runIt + whenOpen("TEquipRecImportDup", refuse) +
                       whenOpen("TEquipRecImportDup", seeProgress) + type(" b\" \r") +
                       clickIn("TEquipRecImportDup", "BtnRename") + type("12345678901234567890\r") + confirm;
    openLog(f.folder.path());
    QCOMPARE(f.import("A\na\na\na\nb\nb\"\n", steps), int{QDialog::Accepted});
    closeLog();
    QVERIFY(f.log().endsWith("info: import .csv: done, 6 lines, 5 records, 4 duplicates\n"));
    QCOMPARE(f.ids(), "a A b\x94 a b 12345678901234567");
  }

  void cancelledImportChangesNothing() {
    const auto escape =
        whenOpen("TEquipRecImportDup", [](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    const auto skipThenCancel = whenOpen("TEquipRecImportDup", [](QWidget* dialog) {
      click(dialog, "BtnSkip");
      click(dialog->parentWidget(), "BtnCancel");
    });
    for (const TdialogSteps& end : {cancel, skipIt + skipIt + skipThenCancel, skipIt + escape}) {
      TimportFixture f;
      const QByteArray content = "b\n" + QByteArray("a\n").repeated(18432);
      QCOMPARE(f.import(content, goOn + firstColumn + runIt + end), int{QDialog::Rejected});
      QCOMPARE(f.messages.takeCaptions(), {"Import Canceled"});
      QCOMPARE(f.ids(), "a");
    }
  }

  void fileThatGoesIsTold() {
    TimportFixture f;
    const auto clickWithout = [&f](const char* dialog, const char* button) {
      return whenOpen(dialog, [&f, button](QWidget* window) {
        std::filesystem::remove(f.file);
        click(window, button);
        writeBytes(f.file, "b\n");
        control<QLineEdit>(f.options, "EditFilename")->setText(f.name + u'/');
        control<QLineEdit>(f.options, "EditFilename")->setText(f.name);
      });
    };
    const auto steps = clickWithout("TEquipRecImportOptions", "BtnContinue") + goOn + firstColumn +
                       clickWithout("TEquipRecImport", "BtnImport") + runIt + confirm;
    openLog(f.folder.path());
    QCOMPARE(f.import("b\n", steps), int{QDialog::Accepted});
    closeLog();
    QVERIFY(f.log().count("error: open import file .csv: ") == 2 && !f.log().contains("f.csv"));
    QCOMPARE(f.messages.takeCaptions(), QByteArrayList({"Error", "Error"}));
    QCOMPARE(f.ids(), "a b");
  }

  void hostMayGoAnyTime() {
    const TdialogSteps run = goOn + firstColumn + runIt;
    const std::initializer_list<std::tuple<TdialogSteps, const char*, const char*>> cases = {
        {{}, "TEquipRecImportOptions", "BtnContinue"},
        {goOn, "TEquipRecImport", ""},
        {run, "TEquipRecImportDup", "BtnSkip"},
        {run, "TImportProgress", "BtnCancel"},
        {run + skipIt, "TImportProgress", "BtnOK"}};
    for (const auto& [before, dialog, button] : cases) {
      TimportFixture f;
      const auto go = whenOpen(
          dialog, [&](QWidget*) { f.host.reset(); }, button);
      QCOMPARE(f.import("b\na\n", before + go), int{QDialog::Rejected});
      QCOMPARE(f.messages.takeCaptions(), {});
    }
  }

  void recordsStayWhenTheHostGoesUnderABox() {
    TimportFixture f;
    replaceMessageBox([&](auto...) { return f.host.reset(), QMessageBox::Ok; });
    QCOMPARE(f.import("b\nc,d\n", goOn + firstColumn + runIt), int{QDialog::Rejected});
    QCOMPARE(f.ids(), "a b c");
  }

  void exportComesBackThroughTheFrame() {
    TframeFixture f;
    f.writeIni("[Import]\nStartRow=2\nFilename=" + nameOf(f.folder / "export.csv").toLocal8Bit() + "\n");
    f.open();
    f.pressHeading(1);
    f.click("btnExport");
    f.grid()->selectAll();
    f.messages.answer = QMessageBox::Yes;
    f.click("btnDelete");
    f.control("txtDescSearch")->setText(QStringLiteral("nothing"));
    (goOn + runIt + confirm).during([&] { f.press(Qt::Key_I, Qt::ControlModifier); });
    QCOMPARE(f.messages.takeCaptions(), {"Delete Records?"});
    QCOMPARE(f.column(1).toLatin1() + text(f.frame.get(), "txtDescSearch"), "a b c");
    QCOMPARE(f.control<QWidget>("btnUndo")->toolTip(), QStringLiteral("Undo the import of 3 records (Ctrl+Z)"));
    f.click("btnUndo");
    QCOMPARE(f.column(1), QString());
    f.click("btnRedo");
    QCOMPARE(f.selectedRows(), QList<int>({0, 1, 2}));
    f.click("BtnExit");
    QCOMPARE(f.data(), "\"a\",2\n\"b\",3\n\"c\",1\n");
  }
};
EQREC_TEST(TdialogsTest);

#include "dialogsTest.moc"
