#include "comm/selector/freePorts.h"

#include <utility>

TfreePortSearch::TfreePortSearch(TcanOpen canOpen)
    : thread_([this, canOpen = std::move(canOpen)](const std::stop_token& stop) { run(stop, canOpen); }) {}

std::vector<int> TfreePortSearch::found() const {
  const std::lock_guard lock(mutex_);
  return found_;
}

bool TfreePortSearch::waitForEnd(std::chrono::milliseconds atMost) const {
  std::unique_lock lock(mutex_);
  return end_.wait_for(lock, atMost, [this] { return ended_; });
}

void TfreePortSearch::run(const std::stop_token& stop, const TcanOpen& canOpen) {
  for (int number = 1; number <= lastPort && !stop.stop_requested(); ++number) {
    if (!canOpen(number)) continue;
    const std::lock_guard lock(mutex_);
    found_.push_back(number);
  }
  const std::lock_guard lock(mutex_);
  ended_ = true;
  end_.notify_all();
}
