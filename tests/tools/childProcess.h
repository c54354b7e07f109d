#pragma once

#include <QByteArrayList>
#include <QStringList>
#include <cstdint>

/// A child process, killed with this object: the simulated analyzer or a tool of the machine that runs the tests.
class TchildProcess {
 public:
  TchildProcess(const QString& program, const QStringList& arguments);
  TchildProcess(const TchildProcess&) = delete;
  TchildProcess& operator=(const TchildProcess&) = delete;
  ~TchildProcess();

  /// The next output; empty when the process has ended or has printed nothing for some seconds.
  QByteArray readMore() const;
  /// All output until the process ends.
  QByteArray readAll() const {
    QByteArray all;
    for (QByteArray more = readMore(); !more.isEmpty(); more = readMore()) all += more;
    return all;
  }

 private:
  std::intptr_t process_ = -1;  ///< the system's identifier, where it has one
  std::intptr_t output_ = -1;
};
