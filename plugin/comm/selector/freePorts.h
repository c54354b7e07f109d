#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/// Finds out which of the serial ports COM1 to COM256 are free, on a thread of its own because a driver may be slow.
/// The functions may be called from any thread.
class TfreePortSearch {
 public:
  static constexpr int lastPort = 256;

  /// Whether the port of that number can be opened; closes it again. Called on the search's thread for one port after
  /// the other, but never after the search was destroyed. Must not throw.
  using TcanOpen = std::function<bool(int number)>;

  /// Starts the search. Throws `std::system_error` if the thread cannot be started.
  explicit TfreePortSearch(TcanOpen canOpen);
  TfreePortSearch(const TfreePortSearch&) = delete;
  TfreePortSearch& operator=(const TfreePortSearch&) = delete;
  /// Stops the search after the current port, and waits for that.
  ~TfreePortSearch() = default;

  /// The numbers found so far, ascending.
  std::vector<int> found() const;

  /// Stops the search after the current port, without waiting.
  void stop() { thread_.request_stop(); }

  /// Waits until the search has ended, for `atMost`; false if it is still running. After its end no further port is
  /// found, and no port is open.
  bool waitForEnd(std::chrono::milliseconds atMost) const;

 private:
  void run(const std::stop_token& stop, const TcanOpen& canOpen);

  mutable std::mutex mutex_;
  mutable std::condition_variable end_;
  std::vector<int> found_;
  bool ended_ = false;
  std::jthread thread_;  // last, because it uses the others
};
