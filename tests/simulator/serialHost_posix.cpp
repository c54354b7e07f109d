#include <QFile>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>

#include "simulator/serialHost.h"

const bool hasSerialLink = true;

TtestHost openSerialHost(const QByteArray& path) {
  const auto port = std::make_shared<QFile>(QFile::decodeName(path));
  if (!port->open(QIODevice::ReadWrite | QIODevice::Unbuffered)) return {};
  termios mode{};
  tcgetattr(port->handle(), &mode);
  cfmakeraw(&mode);
  tcsetattr(port->handle(), TCSAFLUSH, &mode);
  const auto read = [port](qsizetype count) {
    QByteArray bytes;
    for (pollfd ready{port->handle(), POLLIN, 0}; bytes.size() < count && poll(&ready, 1, patience) > 0;) {
      const QByteArray more = port->read(count - bytes.size());
      if (more.isEmpty()) break;
      bytes += more;
    }
    return bytes;
  };
  return {[port](const QByteArray& bytes) { return port->write(bytes); }, read};
}
