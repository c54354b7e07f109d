#pragma once

#include <QByteArray>
#include <functional>

inline constexpr int patience = 20000;  ///< ms that an analyzer has to answer

/// The host's end of a link in its plainest form: what the analyzer must get along with. The last copy closes it.
struct TtestHost {
  /// How many bytes the link takes; -1 where it is lost.
  std::function<qsizetype(const QByteArray& bytes)> write;
  /// Waits for so many bytes; fewer where the link is lost.
  std::function<QByteArray(qsizetype count)> read;
};

/// Opens the analyzer's `link`, "tcp", "serial" or "usb", at this port or path.
TtestHost openHost(const QByteArray& link, const QByteArray& where);

/// An entry of an upload image.
QByteArray imageEntry(const QByteArray& id, int procedure);
/// An image of so many blocks with these entries at its beginning.
QByteArray imageOf(const QByteArray& entries, int blocks);

/// Handshake and upload, as far as they go: "done", or the number of the command or block that failed, and how.
QByteArray exchange(const TtestHost& host, const QByteArray& image);
