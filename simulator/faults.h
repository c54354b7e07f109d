#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

/// The kinds of link that the analyzer serves; flags, so that a fault can say where it exists.
enum class TlinkKind : unsigned { tcp = 1, serial = 2, usb = 4 };

/// The name of a link in what is printed.
const char* nameOf(TlinkKind link);

/// Where an answer is due: to the handshake, to the upload's command, to a block (from 1), or where nothing is due any
/// more: after the answer to the last block.
struct Tplace {
  enum class Tkind : unsigned { handshake = 1, command = 2, block = 4, after = 8 };

  Tkind kind = Tkind::handshake;
  int block = 0;  ///< of kind `block` only

  bool operator==(const Tplace&) const = default;
};

enum class TfaultKind {
  silence,
  half,
  split,
  wrong,
  wrongEnd,
  stale,
  surplus,
  late,
  tooLate,
  close,
  ackClose,
  reset,
  unplug,
  shortWrite,
  blockedWrite,
  noise,
  garbage,
  shortHandshake,
};

/// What is known of a kind of fault.
struct TfaultTraits {
  TfaultKind kind = TfaultKind::silence;
  const char* name = nullptr;
  unsigned places = 0;   ///< where it makes sense, of Tplace::Tkind
  unsigned links = 0;    ///< where it exists, of TlinkKind
  bool isRight = false;  ///< the right answer arrives all the same, and in time
  bool isDeaf = false;   ///< nothing that comes after it on the connection is answered
};

/// The table of all kinds.
const std::vector<TfaultTraits>& faultTable();

/// A fault as it was asked for.
struct Tfault {
  TfaultTraits traits;
  Tplace place;
  QByteArray name;  ///< KIND@WHERE

  bool existsOn(TlinkKind link) const { return (traits.links & static_cast<unsigned>(link)) != 0; }
  /// Whether the stand-in driver plays it, inside a write of the host, instead of the analyzer.
  bool isDriversOn(TlinkKind link) const;
};

/// Reads KIND[@WHERE] for uploads of so many blocks. Without WHERE it is the first place where the kind makes sense.
/// Nothing, and `error` says why, where it cannot be played.
std::optional<Tfault> parseFault(const QString& text, int blocks, QString& error);

/// The one fault of a run, shared by all connections: played once, and then never again.
class TfaultScript {
 public:
  explicit TfaultScript(std::optional<Tfault> fault = {}) : fault_(std::move(fault)) {}

  /// The fault that is still to be played; null where there is none.
  const Tfault* pending() const { return fault_ && !played_ ? &*fault_ : nullptr; }
  void setPlayed() { played_ = true; }

 private:
  std::optional<Tfault> fault_;
  bool played_ = false;
};
