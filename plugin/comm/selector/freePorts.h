#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/// What the search asks the system about a port by its number. Called on the search's thread, for one port at a time;
/// must not throw.
struct TportCalls {
  /// Whether the port can be opened; closes it again.
  std::function<bool(int number)> canOpen;
  /// Whether there is such a port, told without opening it.
  std::function<bool(int number)> isPresent = [](int) { return false; };
  /// What the port's device calls itself, as UTF-8; empty where nobody knows.
  std::function<std::string(int number)> deviceName = [](int) { return std::string(); };
};

/// A port that can be opened.
struct TfreePort {
  int number = 0;
  std::string deviceName;  ///< UTF-8; may be empty

  bool operator==(const TfreePort&) const = default;
};

/// What a search knows so far: the free ports, ascending, and whether each port was tried.
struct TfoundPorts {
  std::vector<TfreePort> ports;
  bool complete = false;

  bool operator==(const TfoundPorts&) const = default;
};

class TportSearchRun;

/// Finds out which of the serial ports COM1 to COM256 are free, on a thread of its own because a driver may be slow.
///
/// Tries each port once. From then on it looks several times a second for ports that were plugged in or unplugged, and
/// tries again those that were refused at once. A free port is never opened a second time: that could disturb its
/// device.
///
/// `stop` and the destructor do not wait: the thread ends in the background after the port that it tries at the moment.
/// The next search begins when all earlier ones have ended. `endPortSearches` waits for the last. The functions may be
/// called from any thread.
class TfreePortSearch {
 public:
  static constexpr int lastPort = 256;

  /// Starts the search. Throws `std::system_error` if the thread cannot be started.
  explicit TfreePortSearch(TportCalls calls);
  TfreePortSearch(const TfreePortSearch&) = delete;
  TfreePortSearch& operator=(const TfreePortSearch&) = delete;
  ~TfreePortSearch();

  TfoundPorts found() const;

  /// Waits for `atMost` until each port was tried; false if the search is not so far.
  bool waitUntilComplete(std::chrono::milliseconds atMost) const;

  void stop();
  bool isStopped() const;
  /// Waits for `atMost` until a stopped search has ended; false if it is still running. After its end no port is open.
  bool waitForEnd(std::chrono::milliseconds atMost) const;

 private:
  std::shared_ptr<TportSearchRun> run_;  ///< the thread has it, too
};

/// Waits until every search has ended that was destroyed. Called before the module is unloaded. If a driver has not
/// returned when the time is over, the search's thread is left to the end of the process: this module then stays
/// loaded, and the log says so.
void endPortSearches(std::chrono::milliseconds atMost);
