#include "comm/selector/freePorts.h"

#include <algorithm>
#include <mutex>
#include <thread>
#include <utility>

#include "comm/selector/portSearchRun.h"
#include "support/keepModule.h"
#include "support/log.h"

namespace {

using Tclock = std::chrono::steady_clock;
using std::chrono::milliseconds;

struct TsearchThread {
  std::shared_ptr<TportSearchRun> run;
  std::thread thread;

  /// Joins the thread if it has ended by then.
  bool joinUntil(Tclock::time_point end) {
    const auto left = std::chrono::ceil<milliseconds>(end - Tclock::now());
    if (!run->waitFor(&TportSearchRun::ended_, std::max(left, milliseconds(0)))) return false;
    thread.join();
    return true;
  }
};

/// The threads of all searches that may still be running.
class TsearchThreads {
 public:
  TsearchThreads() = default;
  TsearchThreads(const TsearchThreads&) = delete;
  TsearchThreads& operator=(const TsearchThreads&) = delete;
  ~TsearchThreads() { leave(); }

  std::shared_ptr<TportSearchRun> start(TportCalls calls) {
    const std::lock_guard lock(mutex_);
    joinUntil(Tclock::now());
    TportSearchRun::Truns earlier;
    for (const auto& [run, thread] : threads_) earlier.push_back(run);
    auto run = std::make_shared<TportSearchRun>(std::move(calls), std::move(earlier));
    threads_.reserve(threads_.size() + 1);
    threads_.push_back({run, std::thread([run] { run->run(); })});
    return run;
  }

  /// Returns whether no thread is left.
  bool end(milliseconds atMost) {
    const std::lock_guard lock(mutex_);
    joinUntil(Tclock::now() + atMost);
    return threads_.empty();
  }

  void leave() {
    const std::lock_guard lock(mutex_);
    for (auto& entry : threads_) entry.thread.detach();
    threads_.clear();
  }

 private:
  void joinUntil(Tclock::time_point end) {
    std::erase_if(threads_, [&](TsearchThread& entry) { return entry.joinUntil(end); });
  }

  std::mutex mutex_;
  std::vector<TsearchThread> threads_;
};

TsearchThreads& searchThreads() {
  static TsearchThreads threads;
  return threads;
}

}  // namespace

TfreePortSearch::TfreePortSearch(TportCalls calls) : run_(searchThreads().start(std::move(calls))) {}

TfreePortSearch::~TfreePortSearch() {
  stop();
}

TfoundPorts TfreePortSearch::found() const {
  return run_->found();
}

bool TfreePortSearch::waitUntilComplete(milliseconds atMost) const {
  return run_->waitFor(&TportSearchRun::complete_, atMost);
}

void TfreePortSearch::stop() {
  run_->set(&TportSearchRun::stopped_);
}

bool TfreePortSearch::isStopped() const {
  return run_->waitFor(&TportSearchRun::stopped_, {});
}

bool TfreePortSearch::waitForEnd(milliseconds atMost) const {
  return run_->waitFor(&TportSearchRun::ended_, atMost);
}

void endPortSearches(milliseconds atMost) {
  if (searchThreads().end(atMost)) return;
  logFailure("a driver does not return from opening a serial port: its thread is left to the end of the process");
  keepModule();
  searchThreads().leave();
}
