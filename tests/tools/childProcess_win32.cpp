#include <cstdlib>
#include <winsock2.h>

#include "tools/childProcess.h"

namespace {

/// The path as Wine's host names it: its programs start in a folder where Wine's drives are folders.
QString nativeArgument(const QString& argument) {
  if (argument.size() < 2 || argument[1] != u':') return argument;
  return argument[0].toLower() + argument.sliced(1).replace(u'\\', u'/');
}

}  // namespace

// The program runs on Wine's host, which has pseudo-terminals for serial ports and poppler for PDF files.
// tools/windows/start-programs starts one program for each connection, sends its output, and kills it when the
// connection closes.
TchildProcess::TchildProcess(const QString& program, const QStringList& arguments) {
  WSADATA data{};
  WSAStartup(MAKEWORD(2, 2), &data);
  sockaddr_in starter{};
  starter.sin_family = AF_INET;
  starter.sin_port = htons(static_cast<u_short>(qEnvironmentVariableIntValue("QT484_STARTER")));
  starter.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const SOCKET socket = ::socket(AF_INET, SOCK_STREAM, 0);
  output_ = static_cast<std::intptr_t>(socket);
  if (connect(socket, reinterpret_cast<const sockaddr*>(&starter), sizeof starter) != 0) {
    qFatal("QT484_STARTER: nothing there starts programs");
  }
  QStringList texts = {program};
  for (const QString& argument : arguments) texts << nativeArgument(argument);
  const QByteArray line = texts.join(u'\t').toUtf8() + '\n';
  send(socket, line.constData(), static_cast<int>(line.size()), 0);
}

TchildProcess::~TchildProcess() {
  closesocket(static_cast<SOCKET>(output_));
  WSACleanup();
}

QByteArray TchildProcess::readMore() const {
  constexpr int patience = 20000;  // ms
  WSAPOLLFD waiting{static_cast<SOCKET>(output_), POLLRDNORM, 0};
  if (WSAPoll(&waiting, 1, patience) <= 0) return {};
  QByteArray buffer(4096, '\0');
  const int count = recv(waiting.fd, buffer.data(), static_cast<int>(buffer.size()), 0);
  return buffer.first(std::max(count, 0));
}
