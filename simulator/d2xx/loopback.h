#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

/// A connection to a port of this machine over the system's sockets. The destructor closes it.
class Tloopback {
 public:
  /// Null if nothing listens.
  static std::unique_ptr<Tloopback> connect(std::uint16_t port);
  ~Tloopback();
  Tloopback(const Tloopback&) = delete;
  Tloopback& operator=(const Tloopback&) = delete;

  /// Sends all bytes. False if the connection is lost.
  bool send(std::string_view bytes) const;
  /// Receives until `count` bytes arrived, the time is over or the connection is lost. Returns how many arrived.
  std::size_t receive(char* buffer, std::size_t count, int milliseconds) const;
  /// The number of bytes ready to receive; nothing once the connection is lost and everything was received.
  std::optional<std::uint32_t> waiting() const;

 private:
  explicit Tloopback(std::intptr_t socket) : socket_(socket) {}

  std::intptr_t socket_;  ///< the system's socket; -1 for none
};
