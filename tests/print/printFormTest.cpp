#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QProgressBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QTest>

#include "print/paper.h"
#include "print/printFixture.h"
#include "print/printForm.h"
#include "support/captionControls.h"
#include "tools/dialogs.h"
#include "tools/messageRecorder.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

class Tform {
 public:
  explicit Tform(int count) : records(count) {
    qputenv("HOME", home.path().string().c_str());  // so that no report of the user is overwritten
    form = std::make_unique<TEquipRecPrint>(records.job(), TiniFile(folder / "e.ini"), nullptr);
    form->show();
  }

  void click(const char* button) const { ::click(form.get(), button); }
  bool isChecked(const char* button) const { return control<QAbstractButton>(form.get(), button)->isChecked(); }
  /// Presses Save as PDF, in the dialog or its preview, and names the file.
  void savePdf(const char* name, const QWidget* window = nullptr) const {
    whenOpen("QFileDialog", [path = folder / name](QWidget* dialog) {
      control<QLineEdit>(dialog, "fileNameEdit")->setText(nameOf(path));
      QMetaObject::invokeMethod(dialog, "accept");
    }).during([&] { ::click(window == nullptr ? form.get() : window, "btnPdf"); });
  }

  TtestFolder folder;
  TtestFolder home;
  TmessageRecorder messages;
  TprintFixture records;
  std::unique_ptr<TEquipRecPrint> form;
};

constexpr int manyRecords = 18432;

}  // namespace

/// The print dialog as a user handles it.
class TprintFormTest : public QObject {
  Q_OBJECT
 private slots:
  void initTestCase() {
    qputenv("CUPS_SERVER", "/nowhere");  // no printer, whatever the machine has
  }

  void choicesAreReadAndKept() {
    Tform f(5);
    QVERIFY(f.isChecked("chkTitle") && !f.isChecked("chkCustom1"));
    QVERIFY(f.isChecked("radSelected") && f.isChecked("radPortrait"));
    QCOMPARE(control<QCheckBox>(f.form.get(), "chkCustom2")->text(), QStringLiteral("R&D"));
    QVERIFY(!control<QCheckBox>(f.form.get(), "chkCustom3")->text().isEmpty());
    for (QCheckBox* box : f.form->findChildren<QCheckBox*>()) box->setChecked(false);
    for (const char* button : {"btnPreview", "btnPrint", "btnPdf"}) {
      QVERIFY(!control(f.form.get(), button)->isEnabled());
    }
    f.click("chkCustom3");
    f.click("radLandscape");
    auto* paper = control<QComboBox>(f.form.get(), "ComboBoxPaper");
    QCOMPARE(paper->currentText(), QPageSize::name(usualPaper().id()).section(u' ', 0, 0));
    paper->setCurrentText(QStringLiteral("A5"));
    QVERIFY(control(f.form.get(), "btnPdf")->isEnabled());
    f.form->close();
    QCOMPARE(
        linesOf(f.folder / "e.ini"),
        "[PRINT]\nCONTROLNUM=0\nDESCRIPTION=0\nMANUFACTURER=0\nMODEL=0\nTESTPROC=0\nTITLE=0\nCUSTOM1=0\nCUSTOM2=0\n"
        "CUSTOM3=1\nLANDSCAPE=1\nPAPER=A5\nPDFFOLDER=\n");
    f.form = std::make_unique<TEquipRecPrint>(f.records.job(), TiniFile(f.folder / "e.ini"), nullptr);
    QVERIFY(!f.isChecked("chkTitle") && f.isChecked("chkCustom3") && f.isChecked("radLandscape"));
    QCOMPARE(control<QComboBox>(f.form.get(), "ComboBoxPaper")->currentText(), QStringLiteral("A5"));
  }

  void oneSelectedRecordIsOnlyOffered() {
    const TtestFolder folder;
    const TprintFixture records(5);
    for (const std::size_t count : {0, 1}) {
      TprintJob job = records.job();
      job.selected.resize(count);
      const TEquipRecPrint form(job, TiniFile(folder / "e.ini"), nullptr);
      QVERIFY(control<QAbstractButton>(&form, "radAll")->isChecked());
      QCOMPARE(control(&form, "radSelected")->isEnabled(), count == 1);
    }
  }

  void captionIsShownToTheLetter() {
    TcaptionCheckBox box;
    box.setCaption(QStringLiteral("R&D"));
    QCheckBox plain(QStringLiteral("R&&D"));
    for (QCheckBox* either : {static_cast<QCheckBox*>(&box), &plain}) either->resize(120, 24);
    QCOMPARE(box.grab().toImage(), plain.grab().toImage());
  }

  void previewIsLeafedByKeyboard() {
    Tform f(manyRecords);
    f.click("radAll");
    whenOpen("TfrmPrintPreview", [](QWidget* preview) {
      const auto* page = control<QSpinBox>(preview, "edtPage");
      auto* sheet = control(preview, "pagPage");
      QVERIFY(QTest::qWaitForWindowActive(preview));
      QCOMPARE(control<QScrollArea>(preview, "scrPage")->horizontalScrollBar()->maximum(), 0);
      const QImage first = sheet->grab().toImage();
      const QImage margin = first.copy(0, 0, first.width() / 20, first.height());
      QImage white = margin;
      white.fill(Qt::white);
      QCOMPARE(margin, white);
      const auto press = [&](Qt::Key key) { QTest::keyClick(preview->windowHandle(), key, Qt::ControlModifier); };
      QTest::keyClick(preview->windowHandle(), Qt::Key_PageDown);
      QCOMPARE(page->value(), 2);
      QVERIFY(sheet->grab().toImage() != first);
      press(Qt::Key_End);
      QCOMPARE(page->value(), page->maximum());
      QVERIFY(page->maximum() > 100 && !control<QAbstractButton>(preview, "btnNext")->isEnabled());
      press(Qt::Key_Home);
      QVERIFY(!control(preview, "btnPrevious")->isEnabled());
      QCOMPARE(sheet->grab().toImage(), first);
      press(Qt::Key_Plus);
      QVERIFY(sheet->width() > first.width());
      for (int i = 0; i < 5; ++i) press(Qt::Key_Plus);
      const int before = sheet->width();
      press(Qt::Key_Minus);
      QVERIFY(sheet->width() < before);
      auto* bar = control<QScrollArea>(preview, "scrPage")->verticalScrollBar();
      bar->setValue(bar->maximum());
      QVERIFY(bar->value() > 0);
      QTest::keyClick(preview->windowHandle(), Qt::Key_PageDown);
      QCOMPARE(bar->value(), 0);
      press(Qt::Key_0);
      QVERIFY(sheet->height() < preview->height());
      preview->close();
    }).during([&] { f.click("btnPreview"); });
    QVERIFY(f.form->isVisible());
  }

  void outputIsWrittenOrSaysWhyNot() {
    Tform f(5);
    control<QComboBox>(f.form.get(), "ComboBoxPaper")->setCurrentText(QStringLiteral("Legal"));
    f.savePdf("r.pdf");
    QVERIFY(f.form->isHidden());
    QVERIFY(poppler("pdftotext", {QStringLiteral("-bbox")}, f.folder / "r.pdf").contains(u"height=\"1008."));
    QVERIFY(bytesOf(f.folder / "r.pdf").contains(QByteArray("\0E\0q\0u\0i\0p\0m\0e\0n\0t", 18)));  // its title
    const QString printed = poppler("pdftotext", {}, f.folder / "r.pdf");
    for (const auto& [text, there] :
         {std::pair("ID00004", false), {"ID00003", true}, {"ID00002", true}, {"ID00001", false}}) {
      QCOMPARE(printed.contains(QLatin1String(text)), there);
    }
    f.form->show();
    f.savePdf("missing/r.pdf");
    f.click("btnPrint");
    QCOMPARE(f.messages.takeCaptions(), QByteArrayList({"PDF Error", "No Printer"}));
    QVERIFY(f.form->isVisible());
  }

  void previewPrintsAndRemembersTheFolder() {
    Tform f(5);
    const auto savedFrom = [&](QWidget* preview) {
      click(preview, "btnPrint");
      QCOMPARE(f.messages.takeCaptions(), QByteArrayList{"No Printer"});
      QVERIFY(preview->isVisible());
      f.savePdf("r.pdf", preview);
    };
    whenOpen("TfrmPrintPreview", savedFrom).during([&] { f.click("btnPreview"); });
    QVERIFY(f.form->isHidden());
    QVERIFY(poppler("pdftotext", {}, f.folder / "r.pdf").contains(u"ID00003"));
    f.form = std::make_unique<TEquipRecPrint>(f.records.job(), TiniFile(f.folder / "e.ini"), nullptr);
    f.form->show();
    whenOpen("QFileDialog", [&](QWidget* dialog) {
      QCOMPARE(qobject_cast<QFileDialog*>(dialog)->directory().path(), nameOf(f.folder.path()));
      dialog->close();
    }).during([&] { f.click("btnPdf"); });
  }

  void cancelledProgressLeavesTheDialogOpen() {
    const Tform f(manyRecords);
    f.click("radAll");
    whenOpen("TfrmPrintProgress", [](QWidget* progress) {
      QVERIFY(control<QProgressBar>(progress, "barPages")->maximum() > 100);
      click(progress, "btnCancel");
    }).during([&] { f.savePdf("r.pdf"); });
    QVERIFY(f.form->isVisible());
    QCOMPARE(namesIn(f.folder.path()), QByteArrayList());
  }

  void hostMayDeleteItAtAnyTime() {
    for (const QByteArray dialog : {"QFileDialog", "TfrmPrintProgress", "TfrmPrintPreview"}) {
      const char* button = dialog == "TfrmPrintPreview" ? "btnPreview" : "btnPdf";
      Tform f(manyRecords);
      f.click("radAll");
      whenOpen(dialog.constData(), [&](QWidget*) { f.form.reset(); }).during([&] {
        dialog == "TfrmPrintProgress" ? f.savePdf("r.pdf") : f.click(button);
      });
      QVERIFY(f.form == nullptr);
      QCOMPARE(namesIn(f.folder.path()), QByteArrayList());
    }
  }
};
EQREC_TEST(TprintFormTest);

#include "printFormTest.moc"
