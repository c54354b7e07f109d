#pragma once

#include <QByteArray>
#include <QString>
#include <chrono>
#include <optional>
#include <vector>

/// The kinds of link that the analyzer serves. Flags, because a fault may exist on several of them.
enum class TlinkKind : unsigned { tcp = 1, serial = 2, usb = 4 };

/// The name of a link as printed.
const char* nameOf(TlinkKind link);

/// Where an answer is due: to the handshake, to the upload's command or to a block (from 1). `after` is the place after
/// the answer to the last block, where nothing is due any more.
struct Tplace {
  enum class Tkind : unsigned { handshake = 1, command = 2, block = 4, after = 8 };

  Tkind kind = Tkind::handshake;
  int block = 0;  ///< for the kind `block` only

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
  resume,
};

/// The properties of a kind of fault.
struct TfaultTraits {
  TfaultKind kind = TfaultKind::silence;
  const char* name = nullptr;
  unsigned places = 0;   ///< where it makes sense: flags of Tplace::Tkind
  unsigned links = 0;    ///< where it exists: flags of TlinkKind
  bool isRight = false;  ///< the right answer still arrives in time
  bool isDeaf = false;   ///< the analyzer answers nothing more on the connection
};

/// All kinds of fault.
const std::vector<TfaultTraits>& faultTable();

/// A fault as requested on the command line.
struct Tfault {
  TfaultTraits traits;
  Tplace place;
  QByteArray name;  ///< KIND@WHERE

  bool existsOn(TlinkKind link) const { return (traits.links & static_cast<unsigned>(link)) != 0; }
  /// Whether the stand-in driver plays it, inside a write of the host, and not the analyzer.
  bool isDriversOn(TlinkKind link) const;
};

/// Parses KIND[@WHERE] for uploads of `blocks` blocks. Without WHERE the place is the first one where the kind makes
/// sense. Returns nothing, and `error` says why, if the fault cannot be played.
std::optional<Tfault> parseFault(const QString& text, int blocks, QString& error);

/// The one fault of a run, shared by all connections and played only once.
class TfaultScript {
 public:
  using Tclock = std::chrono::steady_clock;

  explicit TfaultScript(std::optional<Tfault> fault = {}) : fault_(std::move(fault)) {}

  /// The fault still to be played; null if there is none.
  const Tfault* pending() const { return fault_ && !played_ ? &*fault_ : nullptr; }
  void setPlayed() { played_ = true; }

  /// From now on the analyzer takes whatever comes, on any connection, for the rest of a block.
  void awaitRest(Tclock::time_point now) { restAwaited_ = now; }
  /// Whether it takes the bytes that come now so. It ends after a silence of `timeout`.
  bool takesRest(Tclock::time_point now, std::chrono::milliseconds timeout) {
    if (!restAwaited_) return false;
    const bool isSilent = now - *restAwaited_ >= timeout;
    restAwaited_ = isSilent ? std::nullopt : std::optional(now);
    return !isSilent;
  }

 private:
  std::optional<Tfault> fault_;
  bool played_ = false;
  std::optional<Tclock::time_point> restAwaited_;  ///< since the last byte
};
