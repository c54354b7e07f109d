#pragma once

#include <QtGlobal>
#include <chrono>

/// When bytes that travel at a line's speed, 10 bits a byte, have arrived; one wire for each direction.
///
/// A timer fires late, and what the host sends next is late by as much. So that this adds up to nothing over a
/// transfer, times are kept as they would be with perfect timers: `fired` tells how late one was, and the next bytes
/// count as put on the wire earlier by that.
class Tpace {
 public:
  using Tclock = std::chrono::steady_clock;
  using Ttime = Tclock::time_point;
  enum class Tdirection { in, out };

  /// `baud` 0: no line, everything arrives at once.
  explicit Tpace(int baud) : baud_(baud) {}

  bool isPaced() const { return baud_ > 0; }
  /// When so many bytes have arrived that were put on the wire at `now`, behind those that are on it already.
  Ttime arrival(Tdirection direction, Ttime now, qsizetype bytes);
  /// What was to happen at `due` happened at `now`.
  void fired(Ttime due, Ttime now) { lag_ = now - due; }

 private:
  int baud_;
  Tclock::duration lag_{};
  Ttime inFree_;
  Ttime outFree_;
};
