#pragma once

#include <memory>

/// Keeps the computer from falling asleep while this object lives, where the platform can do that; its screen may go
/// dark. Created and destroyed on one thread. Never waits.
class TkeepAwake {
 public:
  TkeepAwake();
  TkeepAwake(const TkeepAwake&) = delete;
  TkeepAwake& operator=(const TkeepAwake&) = delete;
  ~TkeepAwake();

 private:
  struct Trequest;
  std::unique_ptr<Trequest> request_;
};
