#include "simulator/pace.h"

#include <algorithm>

Tpace::Ttime Tpace::arrival(Tdirection direction, Ttime now, qsizetype bytes) {
  if (!isPaced()) return now;
  constexpr qint64 bitsAByte = 10;
  Ttime& free = direction == Tdirection::in ? inFree_ : outFree_;
  const std::chrono::nanoseconds travel{bytes * bitsAByte * std::nano::den / baud_};
  free = std::max(now - lag_, free) + std::chrono::duration_cast<Tclock::duration>(travel);
  return free;
}
