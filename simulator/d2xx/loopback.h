#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

/// A connection to a port of this machine, over the system's own sockets. Destroying it closes it.
class Tloopback {
 public:
  /// Null where nothing listens.
  static std::unique_ptr<Tloopback> connect(std::uint16_t port);
  ~Tloopback();
  Tloopback(const Tloopback&) = delete;
  Tloopback& operator=(const Tloopback&) = delete;

  /// Sends all, or false: the connection is lost.
  bool send(std::string_view bytes) const;
  /// Receives until there are `count` bytes, the time is over or the connection is lost; how many came.
  std::size_t receive(char* buffer, std::size_t count, int milliseconds) const;
  /// How many bytes can be received without waiting; nothing once the connection is lost and all was received.
  std::optional<std::uint32_t> waiting() const;

 private:
  explicit Tloopback(std::intptr_t socket) : socket_(socket) {}

  std::intptr_t socket_;  ///< the system's own; -1 for none
};
