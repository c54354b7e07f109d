#include "simulator/faults.h"

#include <algorithm>

namespace {

using Tkind = Tplace::Tkind;

constexpr unsigned handshake = static_cast<unsigned>(Tkind::handshake);
constexpr unsigned command = static_cast<unsigned>(Tkind::command);
constexpr unsigned acknowledgement = command | static_cast<unsigned>(Tkind::block);
constexpr unsigned anyAnswer = handshake | acknowledgement;
constexpr unsigned anywhere = anyAnswer | static_cast<unsigned>(Tkind::after);

constexpr unsigned tcp = static_cast<unsigned>(TlinkKind::tcp);
constexpr unsigned serial = static_cast<unsigned>(TlinkKind::serial);
constexpr unsigned usb = static_cast<unsigned>(TlinkKind::usb);
constexpr unsigned anyLink = tcp | serial | usb;

std::optional<Tplace> parsePlace(const QString& text, int blocks) {
  if (text == QStringLiteral("handshake")) return Tplace{Tkind::handshake};
  if (text == QStringLiteral("command")) return Tplace{Tkind::command};
  if (text == QStringLiteral("last")) return Tplace{Tkind::block, blocks};
  if (text == QStringLiteral("after")) return Tplace{Tkind::after};
  bool isNumber = false;
  const int block = text.toInt(&isNumber);
  return isNumber && block >= 1 && block <= blocks ? std::optional(Tplace{Tkind::block, block}) : std::nullopt;
}

QString firstPlace(const TfaultTraits& traits) {
  return (traits.places & handshake) != 0 ? QStringLiteral("handshake") : QStringLiteral("command");
}

}  // namespace

const std::vector<TfaultTraits>& faultTable() {
  static const std::vector<TfaultTraits> table{
      // kind, name, places, links, right, deaf
      {TfaultKind::silence, "silence", anyAnswer, anyLink, false, true},
      {TfaultKind::half, "half", anyAnswer, anyLink, false, true},
      {TfaultKind::split, "split", anyAnswer, anyLink, true, false},
      {TfaultKind::wrong, "wrong", anyAnswer, anyLink, false, false},
      {TfaultKind::wrongEnd, "wrong-end", acknowledgement, anyLink, false, false},
      {TfaultKind::stale, "stale", acknowledgement, anyLink, false, false},
      {TfaultKind::surplus, "surplus", anyAnswer, anyLink, true, false},
      {TfaultKind::late, "late", anyAnswer, anyLink, true, false},
      {TfaultKind::tooLate, "too-late", anyAnswer, anyLink, false, false},
      {TfaultKind::close, "close", anywhere, tcp, false, true},
      {TfaultKind::ackClose, "ack-close", anyAnswer, tcp, true, true},
      {TfaultKind::reset, "reset", anywhere, tcp, false, true},
      {TfaultKind::unplug, "unplug", anywhere, serial | usb, false, true},
      {TfaultKind::shortWrite, "short-write", anyAnswer, usb, false, true},
      {TfaultKind::blockedWrite, "blocked-write", anyAnswer, anyLink, false, true},
      {TfaultKind::noise, "noise", anywhere, anyLink, false, false},
      {TfaultKind::garbage, "garbage", handshake, anyLink, false, false},
      {TfaultKind::shortHandshake, "short-handshake", handshake, anyLink, false, true},
      {TfaultKind::resume, "resume", acknowledgement, anyLink, false, true},
  };
  return table;
}

const char* nameOf(TlinkKind link) {
  switch (link) {
    case TlinkKind::tcp:
      return "tcp";
    case TlinkKind::serial:
      return "serial";
    default:
      return "usb";
  }
}

bool Tfault::isDriversOn(TlinkKind link) const {
  return link == TlinkKind::usb && (traits.kind == TfaultKind::shortWrite || traits.kind == TfaultKind::blockedWrite);
}

std::optional<Tfault> parseFault(const QString& text, int blocks, QString& error) {
  const QString name = text.section(u'@', 0, 0);
  const auto& table = faultTable();
  const auto traits = std::find_if(table.begin(), table.end(),
                                   [&](const TfaultTraits& each) { return name == QLatin1String(each.name); });
  if (traits == table.end()) {
    error = QStringLiteral("there is no fault \"%1\"").arg(name);
    return {};
  }
  const QString where = text.contains(u'@') ? text.section(u'@', 1) : firstPlace(*traits);
  const auto place = parsePlace(where, blocks);
  if (!place || (traits->places & static_cast<unsigned>(place->kind)) == 0) {
    error = QStringLiteral("the fault \"%1\" cannot be played at \"%2\"").arg(name, where);
    return {};
  }
  return Tfault{*traits, *place, (name + u'@' + where).toUtf8()};
}
