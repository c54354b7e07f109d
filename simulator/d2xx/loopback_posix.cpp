#include <arpa/inet.h>
#include <cerrno>
#include <chrono>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include "simulator/d2xx/loopback.h"

namespace {

int descriptorOf(std::intptr_t socket) {
  return static_cast<int>(socket);
}

}  // namespace

std::unique_ptr<Tloopback> Tloopback::connect(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  std::unique_ptr<Tloopback> loopback(new Tloopback(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)));
  const int on = 1;
  setsockopt(descriptorOf(loopback->socket_), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  const auto* target = reinterpret_cast<const sockaddr*>(&address);
  return ::connect(descriptorOf(loopback->socket_), target, sizeof address) == 0 ? std::move(loopback) : nullptr;
}

Tloopback::~Tloopback() {
  if (socket_ >= 0) ::close(descriptorOf(socket_));
}

bool Tloopback::send(std::string_view bytes) const {
  while (!bytes.empty()) {
    const ssize_t sent = ::send(descriptorOf(socket_), bytes.data(), bytes.size(), MSG_NOSIGNAL);
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
    pollfd ready{descriptorOf(socket_), POLLIN, 0};
    if (left <= 0 || poll(&ready, 1, static_cast<int>(left)) <= 0) break;
    const ssize_t came = recv(descriptorOf(socket_), buffer + received, count - received, 0);
    if (came <= 0) break;
    received += static_cast<std::size_t>(came);
  }
  return received;
}

std::optional<std::uint32_t> Tloopback::waiting() const {
  int count = 0;
  if (ioctl(descriptorOf(socket_), FIONREAD, &count) != 0) return {};
  if (count > 0) return static_cast<std::uint32_t>(count);
  char next = 0;
  const ssize_t came = recv(descriptorOf(socket_), &next, 1, MSG_PEEK | MSG_DONTWAIT);
  const bool isOpen = came > 0 || (came < 0 && errno == EAGAIN);
  return isOpen ? std::optional<std::uint32_t>(came > 0 ? 1 : 0) : std::nullopt;
}
