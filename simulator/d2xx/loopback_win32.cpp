#include <chrono>
#include <winsock2.h>

#include "simulator/d2xx/loopback.h"

namespace {

SOCKET nativeOf(std::intptr_t socket) {
  return static_cast<SOCKET>(socket);
}

/// Starts the system's sockets for as long as this library is loaded.
bool startSockets() {
  static WSADATA data{};
  static const bool started = WSAStartup(MAKEWORD(2, 2), &data) == 0;
  return started;
}

/// Waits until something can be received, including the end of the connection.
bool awaitInput(std::intptr_t socket, long long milliseconds) {
  WSAPOLLFD ready{nativeOf(socket), POLLRDNORM, 0};
  return WSAPoll(&ready, 1, static_cast<int>(milliseconds)) > 0;
}

}  // namespace

std::unique_ptr<Tloopback> Tloopback::connect(std::uint16_t port) {
  if (!startSockets()) return nullptr;
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const SOCKET socket = WSASocketW(AF_INET, SOCK_STREAM, 0, nullptr, 0, WSA_FLAG_NO_HANDLE_INHERIT);
  std::unique_ptr<Tloopback> loopback(new Tloopback(static_cast<std::intptr_t>(socket)));
  const BOOL on = TRUE;
  setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on), sizeof on);
  const auto* target = reinterpret_cast<const sockaddr*>(&address);
  return ::connect(socket, target, sizeof address) == 0 ? std::move(loopback) : nullptr;
}

Tloopback::~Tloopback() {
  if (nativeOf(socket_) != INVALID_SOCKET) closesocket(nativeOf(socket_));
}

bool Tloopback::send(std::string_view bytes) const {
  while (!bytes.empty()) {
    const int sent = ::send(nativeOf(socket_), bytes.data(), static_cast<int>(bytes.size()), 0);
    if (sent <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

std::size_t Tloopback::receive(char* buffer, std::size_t count, int milliseconds) const {
  using Tclock = std::chrono::steady_clock;
  const auto end = Tclock::now() + std::chrono::milliseconds(milliseconds);
  std::size_t received = 0;
  while (received < count) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Tclock::now()).count();
    if (left <= 0 || !awaitInput(socket_, left)) break;
    const int came = recv(nativeOf(socket_), buffer + received, static_cast<int>(count - received), 0);
    if (came <= 0) break;
    received += static_cast<std::size_t>(came);
  }
  return received;
}

std::optional<std::uint32_t> Tloopback::waiting() const {
  u_long count = 0;
  if (ioctlsocket(nativeOf(socket_), FIONREAD, &count) != 0) return {};
  if (count > 0) return static_cast<std::uint32_t>(count);
  if (!awaitInput(socket_, 0)) return 0;
  char next = 0;
  return recv(nativeOf(socket_), &next, 1, MSG_PEEK) > 0 ? std::optional<std::uint32_t>(1) : std::nullopt;
}
