#include "upload/timeLeft.h"

#include <algorithm>
#include <cmath>

namespace {

using namespace std::chrono_literals;

constexpr int blocksStart = 50;
constexpr int blocksEnd = 90;
constexpr auto silence = 5s;
constexpr auto shortTime = 90s;

}  // namespace

void TtimeLeft::note(int position, Ttime now) {
  if (position < blocksStart || !start_) {
    start_ = now;
    end_.reset();
  } else if (position > blocksStart && position <= blocksEnd) {
    end_ = *start_ + (now - *start_) * (blocksEnd - blocksStart) / (position - blocksStart);
  }
}

QString TtimeLeft::text(Ttime now) const {
  if (!end_ || now - *start_ < silence) return {};
  const auto left = std::max(std::chrono::ceil<std::chrono::seconds>(*end_ - now), 1s);
  if (left >= shortTime) return QStringLiteral("about %1 min left").arg(std::lround(double(left.count()) / 60));
  return QStringLiteral("about %1 s left").arg((left.count() + 4) / 5 * 5);
}
