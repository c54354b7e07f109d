#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/// Finds out which of the serial ports COM1 to COM256 are free, on a thread of its own, because a driver may take its
/// time over each. The functions may be called from any thread, most usefully the user-interface thread.
class TfreePortSearch {
 public:
  static constexpr int lastPort = 256;

  /// Whether the port of that number can be opened; closes it again. Called on the search's thread, for one port after
  /// the other, never after the search was destroyed. Must not throw.
  using TcanOpen = std::function<bool(int number)>;

  /// Begins at once. Throws `std::system_error` where no thread can be had.
  explicit TfreePortSearch(TcanOpen canOpen);
  TfreePortSearch(const TfreePortSearch&) = delete;
  TfreePortSearch& operator=(const TfreePortSearch&) = delete;
  /// Ends the search after the port that is being tried, and waits for that.
  ~TfreePortSearch() = default;

  /// The numbers found so far, ascending.
  std::vector<int> found() const;

  /// Ends the search after the port that is being tried, and does not wait for it.
  void stop() { thread_.request_stop(); }

  /// Waits until the search is over, all ports tried or stopped, but no longer than told; false where it still runs.
  /// When it is over, nothing more will be found, and no port is held open.
  bool waitForEnd(std::chrono::milliseconds atMost) const;

 private:
  void run(const std::stop_token& stop, const TcanOpen& canOpen);

  mutable std::mutex mutex_;
  mutable std::condition_variable end_;
  std::vector<int> found_;
  bool ended_ = false;
  std::jthread thread_;  // the last: it uses the others
};
