#pragma once

#include <QByteArrayList>
#include <QStringList>
#include <cstdint>

/// A program in a process of its own, killed with this object: the simulated analyzer, or a tool of the machine that
/// the tests run on.
class TchildProcess {
 public:
  TchildProcess(const QString& program, const QStringList& arguments);
  TchildProcess(const TchildProcess&) = delete;
  TchildProcess& operator=(const TchildProcess&) = delete;
  ~TchildProcess();

  /// What it prints next; empty where it has ended, or prints nothing for some seconds.
  QByteArray readMore() const;
  /// All that it prints until it ends.
  QByteArray readAll() const {
    QByteArray all;
    for (QByteArray more = readMore(); !more.isEmpty(); more = readMore()) all += more;
    return all;
  }

 private:
  std::intptr_t process_ = -1;  ///< of the system, or what stands for it there
  std::intptr_t output_ = -1;
};
