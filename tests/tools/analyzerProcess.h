#pragma once

#include <QStringList>

#include "tools/childProcess.h"

/// Loads the stand-in USB driver, which is then found by its name alone. False where it cannot be.
bool loadStandInDriver();

/// The simulated analyzer in a process of its own; it ends with this object.
class TanalyzerProcess {
 public:
  explicit TanalyzerProcess(const QStringList& arguments);

  /// The port that it listens on.
  int port() const { return listening_.split(' ').value(2).toInt(); }

  /// The next line that begins so, skipping others; empty where none comes within some seconds.
  QByteArray waitFor(const QByteArray& start);

 private:
  bool readMore();

  TchildProcess process_;
  QByteArray unread_;
  QByteArray listening_;
};
