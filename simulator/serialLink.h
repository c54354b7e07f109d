#pragma once

#include <QSocketNotifier>
#include <memory>

#include "simulator/link.h"
#include "simulator/pseudoTerminal.h"

/// A serial connection: a pseudo-terminal that the host has opened, until the host closes it.
class TserialLink : public Tlink {
  Q_OBJECT
 public:
  explicit TserialLink(std::unique_ptr<TpseudoTerminal> terminal);

  void send(const QByteArray& bytes) override;
  void stopReading() override;
  void close() override;
  void unplug() override;

 signals:
  /// The first byte is about to be received.
  void begun();

 private:
  void read();
  void pass(const QByteArray& bytes);
  void closeWithHost();
  void unplugWithin(int attempts);

  std::unique_ptr<TpseudoTerminal> terminal_;
  QSocketNotifier notifier_;
  bool begun_ = false;
  bool closed_ = false;
};
