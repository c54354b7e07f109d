#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>

#include "host/tour/dialogChain.h"
#include "host/tour/listFolders.h"
#include "host/tour/tour.h"

QString Ttour::exportList() {
  frame().press(Qt::Key_E, Qt::ControlModifier);
  const QByteArray file = fileContent(list_, QStringLiteral("export.csv"));
  expect(file.startsWith("<index>,<control nun>,") && file.count('\n') == rows() + 1,
         QStringLiteral("export.csv is incomplete"));
  return QStringLiteral("export.csv has a heading and %1 lines").arg(rows());
}

QString Ttour::exportListAs() {
  const QString name = QStringLiteral("three devices.csv");
  const QString path = temporary_.filePath(name);
  selectFirstRows(3);
  TdialogChain chain;
  chain.add("QMessageBox", [this](const TuserHands& question) {
    picture(question.window(), QStringLiteral("export-question"));
    question.press(Qt::Key_Y, Qt::AltModifier);
  });
  chain.add("SaveDialogExport", [this, path](const TuserHands& dialog) {
    picture(dialog.window(), QStringLiteral("export-as"));
    dialog.control<QLineEdit>(QStringLiteral("fileNameEdit"))->setText(path);
    const auto* buttons = dialog.control<QDialogButtonBox>(QStringLiteral("buttonBox"));
    dialog.click(buttons->button(QDialogButtonBox::Save));
  });
  boxes_.pause();
  chain.run([this] { frame().press(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier); });
  boxes_.resume();
  expect(comesToFront(frame().window()), QStringLiteral("the plug-in's window does not come back"));
  const QByteArray file = fileContent(temporary_.path(), name);
  expect(file.contains(",Notes & more\r\n") && file.count('\n') == 4, QStringLiteral("the file is incomplete"));
  return QStringLiteral("the three selected records under their headings, in a file of another name");
}
