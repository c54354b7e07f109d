#include "comm/selector/portSearchRun.h"

#include <algorithm>
#include <utility>

namespace {

using Tclock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds betweenLooks(250);
constexpr milliseconds quickAnswer(200);

}  // namespace

TportSearchRun::TportSearchRun(TportCalls calls, Truns earlier)
    : calls_(std::move(calls)), earlier_(std::move(earlier)) {}

void TportSearchRun::run() {
  if (awaitEarlier()) {
    tryAll();
    if (!isStopped()) set(&TportSearchRun::complete_);
    while (!waitFor(&TportSearchRun::stopped_, betweenLooks)) lookAgain();
  }
  set(&TportSearchRun::ended_);
}

/// False if this search was stopped before the earlier ones had ended.
bool TportSearchRun::awaitEarlier() {
  for (const auto& run : earlier_) {
    while (!run->waitFor(&TportSearchRun::ended_, betweenLooks)) {
      if (isStopped()) return false;
    }
  }
  earlier_.clear();
  return true;
}

void TportSearchRun::tryAll() {
  for (int number = 1; number <= TfreePortSearch::lastPort && !isStopped(); ++number) {
    tried(number).present = calls_.isPresent(number);
    tryPort(number);
  }
}

void TportSearchRun::lookAgain() {
  for (int number = 1; number <= TfreePortSearch::lastPort && !isStopped(); ++number) {
    TtriedPort& port = tried(number);
    const bool wasPresent = std::exchange(port.present, calls_.isPresent(number));
    if (wasPresent && !port.present) remove(number);
    if (port.present && !port.free && (!wasPresent || port.tryAgain)) tryPort(number);
  }
}

void TportSearchRun::tryPort(int number) {
  TtriedPort& port = tried(number);
  const auto start = Tclock::now();
  port.free = calls_.canOpen(number);
  port.tryAgain = Tclock::now() - start < quickAnswer;
  if (!port.free) return;
  TfreePort found{number, calls_.deviceName(number)};
  const std::lock_guard lock(mutex_);
  const auto place = std::find_if(ports_.begin(), ports_.end(), [&](const auto& p) { return p.number > number; });
  ports_.insert(place, std::move(found));
}

void TportSearchRun::remove(int number) {
  tried(number).free = false;
  const std::lock_guard lock(mutex_);
  std::erase_if(ports_, [&](const TfreePort& port) { return port.number == number; });
}

TfoundPorts TportSearchRun::found() const {
  const std::lock_guard lock(mutex_);
  return {ports_, complete_};
}

bool TportSearchRun::waitFor(Tflag flag, milliseconds atMost) const {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, atMost, [&] { return this->*flag; });
}

void TportSearchRun::set(Tflag flag) {
  const std::lock_guard lock(mutex_);
  this->*flag = true;
  changed_.notify_all();
}
