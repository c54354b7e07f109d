#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QTcpSocket>

inline constexpr int patience = 20000;  ///< ms; how long an analyzer may take to answer
inline constexpr qsizetype blockSize = 264;

/// An entry of an upload image.
inline QByteArray imageEntry(const QByteArray& id, int procedure) {
  return id.leftJustified(17, ' ') + '\0' + static_cast<char>(procedure % 256) + static_cast<char>(procedure / 256) +
         "\xFF\xFF";
}

/// An image of so many blocks that begins with these entries.
inline QByteArray imageOf(const QByteArray& entries, int blocks) {
  return entries.leftJustified(blocks * blockSize, '\xFF');
}

/// Does a handshake and an upload over this TCP port. Returns "done", or the number of the block with a wrong answer
/// (-1: handshake, 0: command).
inline QByteArray exchange(quint16 port, const QByteArray& image) {
  QTcpSocket socket;
  socket.connectToHost(QHostAddress::LocalHost, port);
  if (!socket.waitForConnected(patience)) return "not connected";
  const qsizetype last = image.size() / blockSize;
  for (qsizetype i = -1; i <= last; ++i) {
    socket.write(i < 0 ? "GESI\r" : i == 0 ? "PEQR\r" : image.mid((i - 1) * blockSize, blockSize));
    const qsizetype size = i < 0 ? blockSize : 2;
    while (socket.bytesAvailable() < size && socket.waitForReadyRead(patience)) continue;
    const QByteArray answer = socket.read(size);
    const bool isRight = i < 0 ? answer.size() == size : answer == (i == 0 || i == last ? "*\r" : "C\r");
    if (!isRight) return QByteArray::number(i);
  }
  return "done";
}
