#pragma once

#include <array>
#include <cstdint>
#include <cstring>

/// What the stand-in driver and the analyzer say to each other over their loopback connection; all that the two share.
///
/// From the analyzer: one order, then the bytes to be read, as they are. To the analyzer: each write of the host as a
/// head and its bytes. The end of the connection is the end of the link. Numbers are in the machine's own byte order,
/// as both ends are on one machine.

/// The fault that the driver is to play, once, in one write of the host.
struct TwriteOrder {
  enum class Tkind : char { none = 'n', shortWrite = 's', blockedWrite = 'b' };

  Tkind kind = Tkind::none;
  std::array<char, 5> command{};  ///< the write that is this command, or ...
  std::uint32_t later = 0;        ///< ... as many writes later
};

/// Stands before the bytes of a write.
struct TwriteHead {
  enum class Tkind : char { whole = 'w', cut = 'c' };

  Tkind kind = Tkind::whole;  ///< `cut`: the order was carried out here
  std::uint32_t size = 0;
};

template <typename Tmessage>
std::array<char, sizeof(Tmessage)> bytesOf(const Tmessage& message) {
  std::array<char, sizeof(Tmessage)> bytes{};
  std::memcpy(bytes.data(), &message, sizeof message);
  return bytes;
}

template <typename Tmessage>
Tmessage messageOf(const char* bytes) {
  Tmessage message;
  std::memcpy(&message, bytes, sizeof message);
  return message;
}
