#include <QApplication>
#include <QCommandLineParser>
#include <algorithm>

#include "host/console.h"
#include "host/hostWindow.h"
#include "host/look.h"
#include "host/tour/tour.h"

namespace {

QString modulePath() {
  return QApplication::applicationDirPath() + QStringLiteral("/EquipmentRecordPlugin" EQREC_MODULE_SUFFIX);
}

int runHost(const ThostFolders& folders) {
  leaveOwnConsole();
  ThostWindow window(modulePath(), folders);
  window.show();
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);  // the main window is hidden while the plug-in's is open
  const QString here = QApplication::applicationDirPath();
  const QCommandLineOption program(QStringLiteral("program-folder"), QStringLiteral("Folder of settings and help."),
                                   QStringLiteral("DIR"), here);
  const QCommandLineOption working(QStringLiteral("working-folder"), QStringLiteral("Folder that holds DATA."),
                                   QStringLiteral("DIR"), here);
  const QCommandLineOption tour(QStringLiteral("tour"),
                                QStringLiteral("Runs the guided tour on a copy of the list in the working folder (by "
                                               "default the sample list), and saves its pictures in DIR."),
                                QStringLiteral("DIR"));
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("A stand-in for the host application of the QT484."));
  parser.addHelpOption();
  const QCommandLineOption points(QStringLiteral("points"), QStringLiteral("Size of all texts, 9 for example."),
                                  QStringLiteral("N"), QString::number(QApplication::font().pointSize()));
  const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Dark colours."));
  const QCommandLineOption keyboard(QStringLiteral("keyboard"), QStringLiteral("Runs the tour without a mouse."));
  parser.addOptions({program, working, tour, points, dark, keyboard});
  parser.process(application);
  setLook(std::clamp(parser.value(points).toInt(), 6, 72), parser.isSet(dark));
  if (parser.isSet(tour)) {
    const QString list = parser.isSet(working) ? parser.value(working) : here + QStringLiteral("/sample");
    if (parser.isSet(keyboard)) TuserHands::takeMouseAway();
    return runTour(modulePath(), list, parser.value(tour));
  }
  return runHost({parser.value(program), parser.value(working)});
}
