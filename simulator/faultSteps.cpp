#include "simulator/faultSteps.h"

#include <algorithm>

namespace {

using Taction = Tstep::Taction;

constexpr int splitPause = 5;  // milliseconds

Tstep send(const QByteArray& bytes) {
  return {Taction::send, bytes};
}

Tstep wait(int milliseconds) {
  return {Taction::wait, {}, milliseconds};
}

/// Before the host's last slot. Slots are 50 ms for the block of the handshake and 10 ms for other answers.
int justInTime(const Tplace& place, int timeout) {
  const int slot = place.kind == Tplace::Tkind::handshake ? 50 : 10;
  return std::max(0, timeout - std::max(slot + 10, timeout / 10));
}

int justTooLate(int timeout) {
  return timeout + std::max(50, timeout / 4);
}

/// Bytes that look random, the same in every run.
QByteArray garbage(qsizetype size) {
  QByteArray bytes;
  for (quint32 state = 484; bytes.size() < size;) {
    state = state * 1664525 + 1013904223;
    bytes += static_cast<char>(state >> 24);
  }
  return bytes;
}

QByteArray stale(const QByteArray& right) {
  return right.startsWith('*') ? "C\r" : "*\r";
}

}  // namespace

Tsteps faultSteps(const Tfault& fault, const QByteArray& right, int timeout) {
  const qsizetype half = right.size() / 2;
  switch (fault.traits.kind) {
    case TfaultKind::half:
      return {send(right.first(half))};
    case TfaultKind::split:
      return {send(right.first(half)), wait(splitPause), send(right.sliced(half))};
    case TfaultKind::wrong:
      return {send("E\r")};
    case TfaultKind::wrongEnd:
      return {send(right.first(1) + '\n')};
    case TfaultKind::stale:
      return {send(stale(right))};
    case TfaultKind::surplus:
      return {send(right + right)};
    case TfaultKind::late:
      return {wait(justInTime(fault.place, timeout)), send(right)};
    case TfaultKind::tooLate:
      return {wait(justTooLate(timeout)), send(right)};
    case TfaultKind::close:
      return {{Taction::close}};
    case TfaultKind::ackClose:
      return {send(right), {Taction::close}};
    case TfaultKind::reset:
      return {{Taction::reset}};
    case TfaultKind::unplug:
      return {{Taction::unplug}};
    case TfaultKind::blockedWrite:
      return {{Taction::stopReading}};
    case TfaultKind::noise:
      return {send("\x15~\xFE" + right)};
    case TfaultKind::garbage:
      return {send(garbage(right.size()))};
    case TfaultKind::shortHandshake:
      return {send(right.first(right.size() - 1))};
    default:  // silence, resume, and the faults that the driver plays
      return {};
  }
}
