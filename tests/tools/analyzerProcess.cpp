#include "tools/analyzerProcess.h"

#include <QCoreApplication>
#include <QLibrary>

bool loadStandInDriver() {
  return QLibrary(QCoreApplication::applicationDirPath() + QStringLiteral("/d2xx/ftd2xx")).load();
}

TanalyzerProcess::TanalyzerProcess(const QStringList& arguments)
    : process_(QStringLiteral("qt484-analyzer"), arguments), listening_(waitFor("listening")) {}

QByteArray TanalyzerProcess::waitFor(const QByteArray& start) {
  do {
    for (qsizetype end = 0; (end = unread_.indexOf('\n')) >= 0;) {
      QByteArray line = unread_.first(end);
      unread_.remove(0, end + 1);
      if (line.startsWith(start)) return line;
    }
  } while (readMore());
  return {};
}

bool TanalyzerProcess::readMore() {
  const QByteArray more = process_.readMore();
  unread_ += more;
  return !more.isEmpty();
}
