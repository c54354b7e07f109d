#pragma once

#include <QCoreApplication>
#include <QLibrary>

#include "tools/childProcess.h"

/// Loads the stand-in USB driver; from then on its name alone finds it. False on failure.
inline bool loadStandInDriver() {
  return QLibrary(QCoreApplication::applicationDirPath() + QStringLiteral("/d2xx/ftd2xx")).load();
}

/// The simulated analyzer as a child process, killed with this object.
class TanalyzerProcess {
 public:
  explicit TanalyzerProcess(const QStringList& arguments) : process_(QStringLiteral("qt484-analyzer"), arguments) {
    port_ = waitFor("listening").split(' ').value(2).toInt();
  }

  /// The port that it listens on.
  int port() const { return port_; }

  /// Skips to the next line that starts with `start`; empty when none comes within some seconds.
  QByteArray waitFor(const QByteArray& start) {
    while (true) {
      for (qsizetype end = 0; (end = unread_.indexOf('\n')) >= 0;) {
        QByteArray line = unread_.first(end);
        unread_.remove(0, end + 1);
        if (line.startsWith(start)) return line;
      }
      const QByteArray more = process_.readMore();
      if (more.isEmpty()) return {};
      unread_ += more;
    }
  }

 private:
  TchildProcess process_;
  QByteArray unread_;
  int port_ = 0;
};

/// An analyzer on USB, with a fault ("silence@1") or none. The stand-in driver connects to the last one made.
class TusbAnalyzer : public TanalyzerProcess {
 public:
  explicit TusbAnalyzer(const QString& fault = {})
      : TanalyzerProcess(QStringList{QStringLiteral("--usb"), QStringLiteral("0")} +
                         (fault.isEmpty() ? QStringList() : QStringList{QStringLiteral("--fault"), fault})) {
    qputenv("QT484_USB", QByteArray::number(port()));
  }
};
