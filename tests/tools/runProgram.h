#pragma once

#include <QProcess>

struct Tended {
  int status = -1;  ///< -1 where the program crashed or did not end
  QByteArray printed;
};

/// Runs a program to its end.
inline Tended runProgram(const QString& program, const QStringList& arguments) {
  constexpr int patience = 120000;  // milliseconds; sanitizers are slow
  QProcess process;
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start(program, arguments);
  if (!process.waitForFinished(patience)) return {};
  return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAll()};
}
