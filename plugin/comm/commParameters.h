#pragma once

#include <array>
#include <cstdint>
#include <variant>

/// How a USB device is told from others; the open goes by its description instead.
struct TusbParameters {
  std::uint16_t vendor = 0x0403;
  std::uint16_t product = 60273;
};

/// A serial port and what it is set to; the analyzer's own line runs as these defaults do.
struct TserialParameters {
  std::array<char, 15> portName{};  ///< "COM5", zero-terminated
  std::uint8_t parity = 0;
  std::uint8_t stopBits = 0;
  std::uint8_t byteSize = 8;
  std::uint32_t baudRate = 19200;
};

/// An analyzer's address in the network.
struct TethernetParameters {
  std::int32_t port = 60601;
  std::array<std::uint8_t, 4> octets{};  ///< most significant first
  std::uint32_t timeOut = 0;             ///< of the connect, in ms; 0: the channel's own
};

using TcommParameters = std::variant<TusbParameters, TserialParameters, TethernetParameters>;
