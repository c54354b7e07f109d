#include "upload/lineRest.h"

#include <map>
#include <mutex>

namespace {

using Tclock = std::chrono::steady_clock;

struct TbrokenOff {
  std::mutex mutex;
  std::map<std::string, Tclock::time_point> times;  ///< by the target
};

TbrokenOff& brokenOff() {
  static TbrokenOff places;
  return places;
}

}  // namespace

void noteBrokenOff(const std::string& target) {
  const std::lock_guard lock(brokenOff().mutex);
  brokenOff().times[target] = Tclock::now();
}

std::chrono::milliseconds restLeft(const std::string& target, std::chrono::milliseconds rest) {
  const std::lock_guard lock(brokenOff().mutex);
  const auto found = brokenOff().times.find(target);
  if (found == brokenOff().times.end()) return std::chrono::milliseconds(0);
  return std::chrono::ceil<std::chrono::milliseconds>(found->second + rest - Tclock::now());
}

void forgetBrokenOff() {
  const std::lock_guard lock(brokenOff().mutex);
  brokenOff().times.clear();
}
