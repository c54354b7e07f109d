#pragma once

#include <optional>
#include <string>
#include <system_error>
#include <utility>

/// Why an operation of the system failed.
struct Tfailure {
  std::string operation;  ///< what was tried, as a verb: "open", "rename", "connect"
  std::string object;     ///< what it was tried on: a path (UTF-8), a port, an address
  std::string reason;     ///< the system's own text, or ours where the system gave none

  /// "open /data/eq.dat: Permission denied (13)"
  std::string text() const { return operation + ' ' + object + ": " + reason; }
};

/// How an operation ended: done, or why not.
class Toutcome {
 public:
  Toutcome() = default;
  Toutcome(Tfailure failure) : failure_(std::move(failure)) {}

  /// Whether it was done.
  explicit operator bool() const { return !failure_; }
  /// Only of an operation that failed.
  const Tfailure& failure() const { return *failure_; }

 private:
  std::optional<Tfailure> failure_;
};

/// The system's text for one of its error numbers: `errno` on POSIX, `GetLastError` on Windows. Never empty.
inline std::string systemErrorText(int error) {
  return std::system_category().message(error) + " (" + std::to_string(error) + ')';
}
