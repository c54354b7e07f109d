#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include "host/tour/dialogChain.h"
#include "host/tour/listFolders.h"
#include "host/tour/tour.h"

namespace {

QString shown(const TuserHands& hands, const char* name) {
  return hands.control<QLineEdit>(QString::fromLatin1(name))->text();
}

/// A list as a spreadsheet writes it: five devices, two of which have the number of an existing record.
bool writeList(const QString& path, const QString& taken) {
  QByteArray text =
      "Inventarnummer;Bezeichnung;Hersteller;Typ;Pr\xC3\xBC"
      "fablauf;Location\r\n";
  text += "TOUR-101;\"Pump; \"\"Perlova\"\"\";Halvorsby Medical;Perlova V2;14;\"Haus A, 2nd floor\"\r\n";
  text += "TOUR-102;R\xC3\xB6ntgenger\xC3\xA4t;Quillmere Health;QO 35 h;30;Bldg D\r\n";
  text += taken.toLatin1() + ";Patient monitor;Kestrelmoor Devices;KD 7;25;Bldg F\r\n";
  text += taken.toLatin1() + ";Patient monitor;Kestrelmoor Devices;KD 7;25;Bldg F\r\n";
  text += "TOUR-103;Electric bed;Nordhalm Pflege and Rehabilitation;NP Komfort 3;63;Ward 7\r\n";
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

using Tpicture = std::function<void(QWidget*, const char*)>;

/// Chooses what the file seems to be, and the columns by their headings.
void addChoices(TdialogChain& chain, const QString& path, const Tpicture& picture) {
  chain.add("TEquipRecImportOptions", [=](const TuserHands& options) {
    options.type(path);
    const QString seen = options.control<QLabel>(QStringLiteral("lblSuggestion"))->text();
    expect(seen == QStringLiteral("Semi-Colon, quotes as spreadsheets write them, UTF-8, headings in row 1"), seen);
    picture(options.window(), "import-options");
    options.tabTo(options.button("btnSuggestion"));
    options.press(Qt::Key_Space);
    options.press(Qt::Key_Return);
  });
  chain.add("TEquipRecImport", [picture](const TuserHands& mapping) {
    const QString first = shown(mapping, "EditDeviceID") + shown(mapping, "EditDesc") + shown(mapping, "EditTestProc");
    expect(first == QStringLiteral("TOUR-101Pump; \u201DPerlova\u201D14"),
           QStringLiteral("headings not recognised: ") + first);
    picture(mapping.window(), "import-mapping");
    mapping.tabTo(mapping.button("BtnImport"));
    mapping.press(Qt::Key_Space);
  });
}

/// Renames the first known device and skips the second.
void addDuplicates(TdialogChain& chain, const Tpicture& picture) {
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
}

/// Looks at the report of the import and closes everything.
void addResult(TdialogChain& chain, const Tpicture& picture) {
  const auto look = [picture](const TuserHands& progress) {
    picture(progress.window(), "import-done");
    progress.tabTo(progress.button("btnDetails"));
    progress.press(Qt::Key_Space);
  };
  chain.add("TImportProgress", look, "BtnOK");
  chain.add("TfrmImportReport", [picture](const TuserHands& report) {
    picture(report.window(), "import-report");
    report.press(Qt::Key_Escape);
  });
  const auto finish = [](const TuserHands& progress) {
    progress.tabTo(progress.button("BtnOK"));
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
  const Tpicture takePicture = [this](QWidget* window, const char* name) {
    picture(window, QString::fromLatin1(name));
  };
  addChoices(chain, path, takePicture);
  addDuplicates(chain, takePicture);
  addResult(chain, takePicture);
  chain.run([this] { frame().press(Qt::Key_I, Qt::ControlModifier); });
  frame().window()->activateWindow();
  expect(comesToFront(frame().window()), QStringLiteral("the plug-in's window does not come back"));
  expect(rows() == before + 4 && columnTexts(controlNumColumn).contains(QStringLiteral("TOUR-104")),
         QStringLiteral("%1 rows").arg(rows()));
  picture(frame().window(), QStringLiteral("frame-imported"));
  leave();
  return QStringLiteral("4 of 5 devices; '%1' was a duplicate, once renamed and once skipped").arg(taken);
}
