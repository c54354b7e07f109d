#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

/// A pseudo-terminal, to be opened and closed once by the host. Its far end, the host's serial port, starts in the
/// system's usual mode for terminals.
class TpseudoTerminal {
 public:
  /// Null where the system has none to give.
  static std::unique_ptr<TpseudoTerminal> open();
  /// Closes it; a host that still has the far end open gets errors from then on.
  ~TpseudoTerminal();
  TpseudoTerminal(const TpseudoTerminal&) = delete;
  TpseudoTerminal& operator=(const TpseudoTerminal&) = delete;

  /// The device to open.
  QString farEnd() const;
  /// A descriptor that becomes readable when the host opens the far end.
  int openingDescriptor() const { return watch_; }
  /// A descriptor that becomes readable when there is something for `read`.
  int descriptor() const { return near_; }

  /// All that waits; nothing once the host has closed the far end and all before was read.
  std::optional<QByteArray> read() const;
  /// Whether the host has closed the far end, read or not.
  bool isClosed() const;
  /// What the terminal does not take at once is lost.
  void write(const QByteArray& bytes) const;
  /// Whether the host has surely read all that was written. A host that keeps the far end to itself cannot be watched.
  bool isDrained() const;

 private:
  TpseudoTerminal() = default;
  bool prepare();

  int near_ = -1;
  int watch_ = -1;
};
