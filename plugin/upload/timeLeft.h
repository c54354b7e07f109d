#pragma once

#include <QString>
#include <chrono>
#include <optional>

/// Estimates how long a transfer still takes, from its progress and the time so far.
class TtimeLeft {
 public:
  using Ttime = std::chrono::steady_clock::time_point;

  /// The progress at a time: 0 to 100, of which 50 to 90 are the blocks.
  void note(int position, Ttime now);

  /// "about 2 min left", or "about 25 s left" below one and a half minutes. Empty in the first five seconds and before
  /// the first blocks.
  QString text(Ttime now) const;

 private:
  std::optional<Ttime> start_;  ///< of the blocks
  std::optional<Ttime> end_;    ///< as expected
};
