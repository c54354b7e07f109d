#pragma once

#include <array>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

#include "comm/selector/freePorts.h"

/// What the search remembers of a port.
struct TtriedPort {
  bool present = false;
  bool free = false;
  bool tryAgain = false;  ///< was refused, but at once
};

/// What the thread of a search does. The thread shares it with its `TfreePortSearch`, and may outlive that.
class TportSearchRun {
 public:
  using Tflag = bool TportSearchRun::*;
  using Truns = std::vector<std::shared_ptr<const TportSearchRun>>;

  /// The run begins when the earlier ones have ended.
  TportSearchRun(TportCalls calls, Truns earlier);

  /// Returns when it was stopped.
  void run();

  // Of any thread.
  void set(Tflag flag);
  bool waitFor(Tflag flag, std::chrono::milliseconds atMost) const;
  TfoundPorts found() const;

  bool stopped_ = false;
  bool complete_ = false;  ///< each port was tried
  bool ended_ = false;     ///< no port is open, and none will be

 private:
  bool isStopped() const { return waitFor(&TportSearchRun::stopped_, {}); }
  bool awaitEarlier();
  void tryAll();
  void lookAgain();
  void tryPort(int number);
  void remove(int number);
  TtriedPort& tried(int number) { return tried_.at(static_cast<std::size_t>(number)); }

  // Of the search's thread.
  const TportCalls calls_;
  Truns earlier_;
  std::array<TtriedPort, TfreePortSearch::lastPort + 1> tried_;

  mutable std::mutex mutex_;  // of the flags and the ports
  mutable std::condition_variable changed_;
  std::vector<TfreePort> ports_;
};
