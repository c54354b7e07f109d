#include "simulator/usbLink.h"

#include <QTcpSocket>
#include <algorithm>

#include "simulator/d2xx/driverLink.h"

namespace {

TwriteOrder orderFor(const TfaultScript& script) {
  TwriteOrder order;
  const Tfault* fault = script.pending();
  if (fault == nullptr || !fault->isDriversOn(TlinkKind::usb)) return order;
  const bool isShort = fault->traits.kind == TfaultKind::shortWrite;
  order.kind = isShort ? TwriteOrder::Tkind::shortWrite : TwriteOrder::Tkind::blockedWrite;
  const bool isHandshake = fault->place.kind == Tplace::Tkind::handshake;
  std::copy_n(isHandshake ? "GESI\r" : "PEQR\r", order.command.size(), order.command.begin());
  order.later = static_cast<std::uint32_t>(fault->place.block);
  return order;
}

}  // namespace

TusbLink::TusbLink(std::unique_ptr<QTcpSocket> socket, const TfaultScript& script)
    : TtcpLink(std::move(socket), TlinkKind::usb) {
  const auto order = bytesOf(orderFor(script));
  TtcpLink::send(QByteArray(order.data(), order.size()));
}

void TusbLink::decode(const QByteArray& bytes) {
  pending_ += bytes;
  constexpr qsizetype headSize = sizeof(TwriteHead);
  while (pending_.size() >= headSize) {
    const auto head = messageOf<TwriteHead>(pending_.constData());
    if (pending_.size() < headSize + head.size) return;
    const QByteArray payload = pending_.sliced(headSize, head.size);
    pending_.remove(0, headSize + head.size);
    if (head.kind == TwriteHead::Tkind::cut) emit driverPlayed();
    emit received(payload);
  }
}
