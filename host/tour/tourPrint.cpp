#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

#include "host/tour/listFolders.h"
#include "host/tour/tour.h"

void Ttour::tourPrinting() {
  step(QStringLiteral("print"), [this] { return choosePrint(); });
  step(QStringLiteral("preview"), [this] { return leafPreview(); });
  step(QStringLiteral("save as PDF"), [this] { return savePdf(); });
}

/// Opens the print dialog with its shortcut and runs `act` on it.
void Ttour::whilePrintIsOpen(const std::function<void(const TuserHands&)>& act) {
  whileDialogIsOpen(
      QStringLiteral("TEquipRecPrint"), [this] { frame().press(Qt::Key_P, Qt::ControlModifier); }, act);
}

QString Ttour::choosePrint() {
  launch();
  selectFirstRows(3);
  whilePrintIsOpen([this](const TuserHands& print) {
    expect(print.button("radSelected")->isChecked(), QStringLiteral("the selected records are not preset"));
    print.tabTo(print.button("chkCustom1"));
    print.press(Qt::Key_Space);
    picture(print.window(), QStringLiteral("print"));
    print.press(Qt::Key_Escape);
  });
  expect(fileContent(list_, QStringLiteral("EquipmentRecord.ini"))
             .replace("\r\n", "\n")
             .contains("[PRINT]\nCONTROLNUM=1\n"),
         QStringLiteral("the choices are not stored"));
  return QStringLiteral("the three selected records are preset; choices are kept even after Cancel");
}

QString Ttour::leafPreview() {
  int pages = 0;
  whilePrintIsOpen([&](const TuserHands& print) {
    print.click(print.button("radAll"));
    whileDialogIsOpen(
        QStringLiteral("TfrmPrintPreview"), [&] { print.click(print.button("btnPreview")); },
        [&](const TuserHands& preview) {
          const auto* page = preview.control<QSpinBox>(QStringLiteral("edtPage"));
          pages = page->maximum();
          pictures(preview.window(), QStringLiteral("print-preview"));
          preview.press(Qt::Key_End, Qt::ControlModifier);
          preview.press(Qt::Key_0, Qt::ControlModifier);
          expect(page->value() == pages, QStringLiteral("Ctrl+End does not go to the last page"));
          picture(preview.window(), QStringLiteral("print-preview-last"));
          preview.press(Qt::Key_Escape);
        });
    print.click(print.button("btnCancel"));
  });
  return QStringLiteral("%1 records on %2 pages, paged to the last one by keyboard").arg(rows()).arg(pages);
}

QString Ttour::savePdf() {
  const QString pdf = temporary_.filePath(QStringLiteral("report.pdf"));
  whilePrintIsOpen([&](const TuserHands& print) {
    print.click(print.button("radLandscape"));
    whileDialogIsOpen(
        QStringLiteral("QFileDialog"), [&] { print.click(print.button("btnPdf")); },
        [&](const TuserHands& dialog) {
          dialog.control<QLineEdit>(QStringLiteral("fileNameEdit"))->setText(pdf);
          const auto* buttons = dialog.control<QDialogButtonBox>(QStringLiteral("buttonBox"));
          dialog.click(buttons->button(QDialogButtonBox::Save));
        });
  });
  const QByteArray content = fileContent(temporary_.path(), QStringLiteral("report.pdf"));
  expect(content.startsWith("%PDF"), QStringLiteral("no PDF file"));
  leave();
  return QStringLiteral("a landscape report of the three selected records, %1 bytes").arg(content.size());
}
