#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

/// A pseudo-terminal that the host opens and closes once. Its far end, the host's serial port, starts in the system's
/// usual mode for terminals.
class TpseudoTerminal {
 public:
  /// Null if the system has none available.
  static std::unique_ptr<TpseudoTerminal> open();
  /// Closes it. A host that still has the far end open gets errors from then on.
  ~TpseudoTerminal();
  TpseudoTerminal(const TpseudoTerminal&) = delete;
  TpseudoTerminal& operator=(const TpseudoTerminal&) = delete;

  /// The path of the device that the host opens.
  QString farEnd() const;
  /// A descriptor that becomes readable when the host opens the far end.
  int openingDescriptor() const { return watch_; }
  /// A descriptor that becomes readable when `read` has something to return.
  int descriptor() const { return near_; }

  /// All bytes waiting; nothing once the host has closed the far end and everything was read.
  std::optional<QByteArray> read() const;
  /// Whether the host has closed the far end, even if bytes are still unread.
  bool isClosed() const;
  /// Bytes that the terminal does not accept at once are lost.
  void write(const QByteArray& bytes) const;
  /// Whether the host has certainly read everything written. False for a host that has the far end exclusively.
  bool isDrained() const;

 private:
  TpseudoTerminal() = default;
  bool prepare();

  int near_ = -1;
  int watch_ = -1;
};
