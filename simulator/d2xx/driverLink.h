#pragma once

#include <array>
#include <cstdint>
#include <cstring>

/// The protocol between the stand-in driver and the analyzer over their loopback connection; all that the two share.
///
/// The analyzer sends one order, then the bytes for the host to read, as they are. The driver sends each write of the
/// host as a head and the bytes. The end of the connection is the end of the link. Numbers are in the machine's byte
/// order, because both ends are on one machine.

/// The fault that the driver must play once, in one write of the host.
struct TwriteOrder {
  enum class Tkind : char { none = 'n', shortWrite = 's', blockedWrite = 'b' };

  Tkind kind = Tkind::none;
  std::array<char, 5> command{};  ///< in the write of this command ...
  std::uint32_t later = 0;        ///< ... or this many writes later
};

/// Precedes the bytes of a write.
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
