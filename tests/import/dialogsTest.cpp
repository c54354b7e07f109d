#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

#include "browser/frameFixture.h"
#include "import/importOptionsForm.h"
#include "store/datastructs.h"
#include "support/log.h"
#include "tools/recordChanges.h"
#include "tools/testList.h"

/// The import as a user goes through its dialogs.
class TdialogsTest : public QObject {
  Q_OBJECT
 private slots:
  void optionsDecideAboutContinue();
  void importGoesThroughAllDialogs();
  void duplicatesAreRenamedOrSkipped();
  void cancelledImportChangesNothing();
  void fileThatGoesIsTold();
  void hostMayGoAnyTime();
  void exportComesBackThroughTheFrame();
};
EQREC_TEST(TdialogsTest);

namespace {

/// What is done to a dialog when it is the active one and a button of it, where one is named, is enabled.
struct Tact {
  QByteArray dialog;
  std::function<void(QWidget*)> act;
  const char* button = "";
};
using Tacts = QList<Tact>;

template <typename Control>
Control* in(const QWidget* dialog, const char* name) {
  auto* control = dialog->findChild<Control*>(QString::fromLatin1(name));
  if (control == nullptr) qFatal("no control %s", name);
  return control;
}
QByteArray text(const QWidget* dialog, const char* name) {
  return in<QWidget>(dialog, name)->property("text").toString().toLatin1();
}
void push(const QWidget* dialog, const char* button) {
  in<QPushButton>(dialog, button)->click();
}
Tact click(const QByteArray& dialog, const char* button) {
  return {dialog, [button](QWidget* window) { push(window, button); }, button};
}
Tact type(const QByteArray& keys) {
  return {"TEquipRecImportDup", [keys](QWidget* dialog) {
            for (const char key : keys) QTest::keyClick(in<QLineEdit>(dialog, "EditDeviceID"), key);
          }};
}

/// Does the acts in turn. Each has a timer of its own, as the ones before may not have returned yet.
void follow(const Tacts& acts, QObject* context) {
  context->setProperty("left", acts.size());
  if (acts.isEmpty()) return;
  auto* timer = new QTimer(context);
  QObject::connect(timer, &QTimer::timeout, timer, [=] {
    QWidget* dialog = QApplication::activeModalWidget();
    const Tact& next = acts.first();
    if (dialog == nullptr || dialog->objectName() != QLatin1String(next.dialog)) return;
    if (*next.button != '\0' && !in<QWidget>(dialog, next.button)->isEnabled()) return;
    timer->stop();
    follow(acts.mid(1), context);
    next.act(dialog);
  });
  timer->start(0);
}

const Tact goOn = click("TEquipRecImportOptions", "BtnContinue");
const Tact firstColumn = {"TEquipRecImport",
                          [](QWidget* form) { in<QComboBox>(form, "cbDeviceID")->setCurrentIndex(1); }};
const Tact runIt = click("TEquipRecImport", "BtnImport");
const Tact skipIt = click("TEquipRecImportDup", "BtnSkip");
const Tact confirm = click("TImportProgress", "BtnOK");

/// An import of `f.csv` into a table of one record, called "a".
struct TimportFixture {
  TimportFixture() {
    TequipRec record;
    record.setText(fieldControlNum, "a");
    append(list.table, record);
  }
  /// Opens the options dialog and does the acts. Returns the result; -1 where not all could be done.
  int import(const QByteArray& content, const Tacts& acts) {
    writeBytes(file, content);
    QObject context;
    follow(acts, &context);
    options = new TEquipRecImportOptions(list, TiniFile(folder / "e.ini"), host.get());
    in<QLineEdit>(options, "EditFilename")->setText(name);
    const int result = options->exec();
    const std::unique_ptr<QDialog> closed(options.data());
    return context.property("left").toInt() == 0 ? result : -1;
  }
  QByteArray ids() const {
    QByteArrayList ids;
    for (TrecordIndex i = 0; i < list.table.count(); ++i) ids << list.table.at(i).text(fieldControlNum);
    return ids.join(' ');
  }
  QByteArray log() const { return linesOf(folder / "EquipmentRecord.log"); }

  TtestFolder folder;
  std::filesystem::path file = folder / "f.csv";
  QString name = QString::fromStdString(file.string());
  TmessageRecorder messages;
  TtestList list;
  std::unique_ptr<QWidget> host = std::make_unique<QWidget>();
  QPointer<TEquipRecImportOptions> options;
};

}  // namespace

void TdialogsTest::optionsDecideAboutContinue() {
  TimportFixture f;
  const auto choose = [&](QWidget* options) {
    auto* edit = in<QLineEdit>(options, "EditFilename");
    auto* other = in<QLineEdit>(options, "EditDelimiter");
    auto* delimiters = in<QComboBox>(options, "ComboBoxDelimiter");
    const auto offered = [=] { return in<QWidget>(options, "BtnContinue")->isEnabled(); };
    QVERIFY(offered() && !other->isVisible());
    for (const QString& none : {QString::fromStdString(f.folder.path().string()), f.name + u'x', QString()}) {
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
    QTest::keyClicks(in<QSpinBox>(options, "SpinEditStartRow"), QStringLiteral("9"));
    QTest::keyClick(in<QSpinBox>(options, "SpinEditStartRow"), Qt::Key_Up);
    QTest::keyClick(options, Qt::Key_Escape);
  };
  QCOMPARE(f.import("", {{"TEquipRecImportOptions", choose}}), int{QDialog::Rejected});
  QVERIFY(linesOf(f.folder / "e.ini").endsWith("f.csv\nDelimiter=2\nUserDelimiter=#\nStartRow=2\nQuotes=0\n"));
}

void TdialogsTest::importGoesThroughAllDialogs() {
  TimportFixture f;
  writeBytes(f.folder / "e.ini", "[Import]\nStartRow=2\n[CUSTOMFIELDS]\nFIELD2NAME=Ward\n");
  const Tact browse = {"TEquipRecImportOptions", [&](QWidget* options) {
                         in<QLineEdit>(options, "EditFilename")->setText(f.name + u'x');
                         push(options, "BtnBrowse");
                       }};
  const Tact choose = {"OpenDialogFilename", [&](QWidget* dialog) {
                         auto* files = qobject_cast<QFileDialog*>(dialog);
                         QCOMPARE(files->directory().path().toStdString(), f.folder.path().string());
                         files->selectFile(QStringLiteral("f.csv"));
                         QMetaObject::invokeMethod(files, "accept");
                       }};
  const Tact look = {"TEquipRecImport", [&](QWidget* mapping) {
                       QCOMPARE(text(mapping, "LabelNumOfColumns"), "Found 3 columns");
                       QCOMPARE(text(mapping, "LabelCustom1") + text(mapping, "LabelCustom2"), "Custom 1Ward");
                       QCOMPARE(text(mapping, "EditCustom2") + text(mapping, "EditDeviceID"), "wN? 1");
                       auto* combo = in<QComboBox>(mapping, "cbDeviceID");
                       QCOMPARE(combo->itemText(0) + combo->itemText(3), QStringLiteral("<None>Column 3"));
                       combo->setCurrentIndex(0);
                       QVERIFY(!in<QWidget>(mapping, "BtnImport")->isEnabled() && text(mapping, "EditDeviceID") == "");
                       combo->setCurrentIndex(2);
                       in<QComboBox>(mapping, "cbTestProc")->setCurrentIndex(3);
                       QVERIFY(!f.options->isVisible());
                       push(mapping, "BtnBack");
                     }};
  const Tacts acts = {browse, choose, goOn, look, goOn, runIt, confirm};
  QCOMPARE(f.import("WARD,Asset Tag,x\nw,N\" 1,7\nw,12345678901234567890\n", acts), int{QDialog::Accepted});
  QCOMPARE(f.messages.takeCaptions(), QByteArrayList({"Malformed Equipment Records", "Device IDs Truncated"}));
  QCOMPARE(f.ids(), "a N\x94 1 12345678901234567");
  QCOMPARE(f.list.table.at(1).testProc(), 7U);
}

void TdialogsTest::duplicatesAreRenamedOrSkipped() {
  TimportFixture f;
  const Tact refuse = {"TEquipRecImportDup", [](QWidget* dialog) {
                         QCOMPARE(text(dialog, "EditDeviceID"), "a");
                         in<QLineEdit>(dialog, "EditDeviceID")->setText(QStringLiteral("  "));
                         QTest::keyClick(in<QLineEdit>(dialog, "EditDeviceID"), Qt::Key_Return);
                         QVERIFY(dialog->isVisible() && !in<QWidget>(dialog, "BtnRename")->isEnabled());
                         in<QLineEdit>(dialog, "EditDeviceID")->setText(QStringLiteral("x"));
                         push(dialog, "BtnSkip");
                       }};
  const Tact keep = click("TEquipRecImportDup", "BtnRename");
  const Tacts acts = {goOn, firstColumn, runIt, refuse, type(" b\" \r"), keep, type("12345678901234567890\r"), confirm};
  openLog(f.folder.path());
  QCOMPARE(f.import("A\na\na\na\nb\nb\"\n", acts), int{QDialog::Accepted});
  closeLog();
  QVERIFY(f.log().endsWith("info: import .csv: done, 6 lines, 5 records, 4 duplicates\n"));
  QCOMPARE(f.ids(), "a A b\x94 a b 12345678901234567");
}

void TdialogsTest::cancelledImportChangesNothing() {
  const Tact cancel = click("TImportProgress", "BtnCancel");
  const Tact escape = {"TEquipRecImportDup", [](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); }};
  const Tact skipThenCancel = {"TEquipRecImportDup", [](QWidget* dialog) {
                                 push(dialog, "BtnSkip");
                                 push(dialog->parentWidget(), "BtnCancel");
                               }};
  for (const Tacts& acts : {Tacts{cancel}, Tacts{skipIt, skipIt, skipThenCancel}, Tacts{skipIt, escape}}) {
    TimportFixture f;
    const QByteArray content = "b\n" + QByteArray("a\n").repeated(18432);
    QCOMPARE(f.import(content, Tacts{goOn, firstColumn, runIt} + acts), int{QDialog::Rejected});
    QCOMPARE(f.messages.takeCaptions(), {"Import Canceled"});
    QCOMPARE(f.ids(), "a");
  }
}

void TdialogsTest::fileThatGoesIsTold() {
  TimportFixture f;
  const auto without = [&f](const Tact& act) {
    return Tact{act.dialog, [act, &f](QWidget* dialog) {
                  std::filesystem::remove(f.file);
                  act.act(dialog);
                  writeBytes(f.file, "b\n");
                  in<QLineEdit>(f.options, "EditFilename")->setText(f.name + u'/');
                  in<QLineEdit>(f.options, "EditFilename")->setText(f.name);
                }};
  };
  const Tacts acts = {without(goOn), goOn, firstColumn, without(runIt), runIt, confirm};
  openLog(f.folder.path());
  QCOMPARE(f.import("b\n", acts), int{QDialog::Accepted});
  closeLog();
  QVERIFY(f.log().count("error: open import file .csv: ") == 2 && !f.log().contains("f.csv"));
  QCOMPARE(f.messages.takeCaptions(), QByteArrayList({"Error", "Error"}));
  QCOMPARE(f.ids(), "a b");
}

void TdialogsTest::hostMayGoAnyTime() {
  const Tacts run = {goOn, firstColumn, runIt};
  const Tact cancel = click("TImportProgress", "BtnCancel");
  for (Tacts acts : {Tacts{goOn}, Tacts{goOn, firstColumn}, run + Tacts{skipIt}, run + Tacts{cancel},
                     run + Tacts{skipIt, confirm}}) {
    TimportFixture f;
    acts.last().act = [&](QWidget*) { f.host.reset(); };
    QCOMPARE(f.import("b\na\n", acts), int{QDialog::Rejected});
    QCOMPARE(f.messages.takeCaptions(), {});
  }
}

void TdialogsTest::exportComesBackThroughTheFrame() {
  TframeFixture f;
  f.writeIni("[Import]\nStartRow=2\nFilename=" + QByteArray::fromStdString((f.folder / "export.csv").string()) + "\n");
  f.open();
  f.pressHeading(1);
  push(f.frame.get(), "btnExport");
  f.grid()->selectAll();
  f.messages.answer = QMessageBox::Yes;
  push(f.frame.get(), "btnDelete");
  in<QLineEdit>(f.frame.get(), "txtDescSearch")->setText(QStringLiteral("nothing"));
  QObject context;
  follow({goOn, runIt, confirm}, &context);
  QTest::keyClick(f.frame->windowHandle(), Qt::Key_I, Qt::ControlModifier);
  QCOMPARE(f.messages.takeCaptions(), {"Delete Records?"});
  QCOMPARE(f.column(1).toLatin1() + text(f.frame.get(), "txtDescSearch"), "a b c");
  f.exitButton()->click();
  QCOMPARE(f.data(), "\"a\",2\n\"b\",3\n\"c\",1\n");
}

#include "dialogsTest.moc"
