#pragma once

#include <QByteArrayList>
#include <cstdint>

/// The simulated analyzer's program in a process of its own, killed with this object.
class TchildProcess {
 public:
  explicit TchildProcess(const QByteArrayList& arguments);
  TchildProcess(const TchildProcess&) = delete;
  TchildProcess& operator=(const TchildProcess&) = delete;
  ~TchildProcess();

  /// What it prints next; empty where it has ended, or prints nothing for some seconds.
  QByteArray readMore();

 private:
  std::intptr_t process_ = -1;  ///< of the system, or what stands for it there
  std::intptr_t output_ = -1;
};
