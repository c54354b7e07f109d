#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QTest>

#include "host/tour/dialogChain.h"
#include "host/tour/listFolders.h"
#include "host/tour/tour.h"

namespace {

QString shown(const TuserHands& hands, const char* name) {
  return hands.control<QLineEdit>(QString::fromLatin1(name))->text();
}

/// Another program's list: five devices, two of which have the number of an existing record.
bool writeList(const QString& path, const QString& taken) {
  QByteArray text = "Asset Tag;Name;Make;Model;Test Procedure;Location\n";
  text += "TOUR-101;Infusion pump;Halvorsby Medical;Perlova V2;14;Haus A, 2nd floor\n";
  text += "TOUR-102;Pulse oximeter;Quillmere Health;QO 35 h;30;Bldg D\n";
  text += taken.toLatin1() + ";Patient monitor;Kestrelmoor Devices;KD 7;25;Bldg F\n";
  text += taken.toLatin1() + ";Patient monitor;Kestrelmoor Devices;KD 7;25;Bldg F\n";
  text += "TOUR-103;Electric bed;Nordhalm Pflege;NP Komfort 3;63;Ward 7\n";
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

using Tpicture = std::function<void(QWidget*, const char*)>;

/// Adds all dialogs of an import, worked by keyboard.
void addImport(TdialogChain& chain, const QString& path, const Tpicture& picture) {
  chain.add("TEquipRecImportOptions", [=](const TuserHands& options) {
    options.type(path);
    options.tabTo(options.control<QComboBox>(QStringLiteral("ComboBoxDelimiter")));
    for (int i = 0; i < 4; ++i) options.press(Qt::Key_Down);
    options.tabTo(options.control<QWidget>(QStringLiteral("SpinEditStartRow")));
    options.press(Qt::Key_Up);
    picture(options.window(), "import-options");
    options.press(Qt::Key_Return);
  });
  chain.add("TEquipRecImport", [picture](const TuserHands& mapping) {
    const QString first = shown(mapping, "EditDeviceID") + shown(mapping, "EditDesc") + shown(mapping, "EditTestProc");
    expect(first == QStringLiteral("TOUR-101Infusion pump14"), QStringLiteral("headings not recognised: ") + first);
    picture(mapping.window(), "import-mapping");
    mapping.tabTo(mapping.button("BtnImport"));
    mapping.press(Qt::Key_Space);
  });
  chain.add("TEquipRecImportDup", [picture](const TuserHands& duplicate) {
    picture(duplicate.window(), "import-duplicate");
    duplicate.type(QStringLiteral("TOUR-104"));
    duplicate.press(Qt::Key_Return);
  });
  chain.add("TEquipRecImportDup", [picture](const TuserHands& duplicate) {
    picture(duplicate.window()->parentWidget(), "import-progress");
    duplicate.tabTo(duplicate.button("BtnSkip"));
    duplicate.press(Qt::Key_Space);
  });
  const auto finish = [picture](const TuserHands& progress) {
    picture(progress.window(), "import-done");
    progress.press(Qt::Key_Space);
  };
  chain.add("TImportProgress", finish, "BtnOK");
}

}  // namespace

void Ttour::tourImport() {
  step(QStringLiteral("import"), [this] { return importList(); });
}

QString Ttour::importList() {
  launch();
  const int before = rows();
  const QString taken = cellText(grid(), 0, controlNumColumn);
  const QString path = temporary_.filePath(QStringLiteral("devices.csv"));
  expect(writeList(path, taken), QStringLiteral("cannot write %1").arg(path));
  TdialogChain chain;
  addImport(chain, path, [this](QWidget* window, const char* name) { picture(window, QString::fromLatin1(name)); });
  chain.run([this] { frame().press(Qt::Key_I, Qt::ControlModifier); });
  frame().window()->activateWindow();
  expect(comesToFront(frame().window()), QStringLiteral("the plug-in's window does not come back"));
  expect(rows() == before + 4 && columnTexts(controlNumColumn).contains(QStringLiteral("TOUR-104")),
         QStringLiteral("%1 rows").arg(rows()));
  picture(frame().window(), QStringLiteral("frame-imported"));
  leave();
  return QStringLiteral("4 of 5 devices; '%1' was a duplicate, once renamed and once skipped").arg(taken);
}
