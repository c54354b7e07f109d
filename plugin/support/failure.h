#pragma once

#include <string>

/// Why an operation of the system failed.
struct Tfailure {
  std::string operation;  ///< what was tried, as a verb: "open", "rename", "connect"
  std::string object;     ///< what it was tried on: a path (UTF-8), a port, an address
  std::string reason;     ///< the system's own text, or ours where the system gave none

  /// "open /data/eq.dat: Permission denied"
  std::string text() const { return operation + ' ' + object + ": " + reason; }
};

/// The system's text for one of its error numbers: `errno` on POSIX, `GetLastError` on Windows. Never empty.
std::string systemErrorText(int error);
