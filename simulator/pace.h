#pragma once

#include <QtGlobal>
#include <algorithm>
#include <chrono>

/// Computes when bytes arrive that travel at a line's speed, 10 bits a byte, with one wire per direction.
///
/// Timers fire late, which delays what the host sends next. To keep these delays from adding up over a transfer, all
/// times are kept as if timers were perfect: `fired` reports how late a timer was, and the next bytes count as sent
/// that much earlier.
class Tpace {
 public:
  using Tclock = std::chrono::steady_clock;
  using Ttime = Tclock::time_point;
  enum class Tdirection { in, out };

  /// With `baud` 0 everything arrives at once.
  explicit Tpace(int baud) : baud_(baud) {}

  bool isPaced() const { return baud_ > 0; }
  /// When bytes sent at `now` will have arrived, after those that are already on the wire.
  Ttime arrival(Tdirection direction, Ttime now, qsizetype bytes);
  /// A timer set for `due` fired at `now`.
  void fired(Ttime due, Ttime now) { lag_ = now - due; }

 private:
  int baud_;
  Tclock::duration lag_{};
  Ttime inFree_;
  Ttime outFree_;
};

inline Tpace::Ttime Tpace::arrival(Tdirection direction, Ttime now, qsizetype bytes) {
  if (!isPaced()) return now;
  constexpr qint64 bitsPerByte = 10;
  Ttime& free = direction == Tdirection::in ? inFree_ : outFree_;
  const std::chrono::nanoseconds travel{bytes * bitsPerByte * std::nano::den / baud_};
  free = std::max(now - lag_, free) + std::chrono::duration_cast<Tclock::duration>(travel);
  return free;
}
