#include <QProcess>

#include "shell/exportedNames.h"

QByteArrayList exportedNames(const char* library) {
  QProcess lister;
  lister.start(QStringLiteral(EQREC_SYMBOL_LISTER),
               {QStringLiteral("--dynamic"), QStringLiteral("--defined-only"), QStringLiteral("--format=just-symbols"),
                QString::fromLocal8Bit(library)});
  if (!lister.waitForFinished()) return {};
  QByteArrayList names = lister.readAllStandardOutput().split('\n');
  names.removeAll({});
  return names;
}
