#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <variant>

/// The transport of a channel.
enum class TcommMode : std::uint8_t { none = 0, serial = 1, usb = 2, ethernet = 3 };

/// The user's choice of how to reach the analyzer.
enum class TcommMethod : std::uint8_t { usb = 0, ethernet = 1, serial = 2 };

struct TcommMethodEntry {
  TcommMethod method;
  int settingsNumber;  ///< in the settings file
  TcommMode mode;
  const char* name;  ///< in the log
};
inline constexpr std::array<TcommMethodEntry, 3> commMethods = {
    {{TcommMethod::usb, 1, TcommMode::usb, "USB"},
     {TcommMethod::ethernet, 2, TcommMode::ethernet, "Ethernet"},
     {TcommMethod::serial, 3, TcommMode::serial, "serial port"}}};

/// The entry whose `member` has this value. If there is none, an entry with mode none.
template <typename Tvalue>
constexpr TcommMethodEntry commMethodBy(Tvalue TcommMethodEntry::*member, Tvalue value) {
  const auto found = std::find_if(commMethods.begin(), commMethods.end(),
                                  [&](const TcommMethodEntry& entry) { return entry.*member == value; });
  return found == commMethods.end() ? TcommMethodEntry{TcommMethod{0xFF}, 0, TcommMode::none, "no connection"} : *found;
}

/// Identifies a USB device. Not used: the device is opened by its description.
struct TusbParameters {
  std::uint16_t vendor = 0x0403;
  std::uint16_t product = 60273;

  static std::string target() { return "USB device"; }
};

/// A serial port and its settings; the defaults are the analyzer's.
struct TserialParameters {
  std::array<char, 15> portName{};  ///< "COM5", zero-terminated
  std::uint8_t parity = 0;
  std::uint8_t stopBits = 0;
  std::uint8_t byteSize = 8;
  std::uint32_t baudRate = 19200;

  std::string target() const { return portName.data(); }
};

/// An analyzer's address in the network.
struct TethernetParameters {
  std::int32_t port = 60601;
  std::array<std::uint8_t, 4> octets{};  ///< most significant first
  std::uint32_t timeOut = 0;             ///< for the connect, in ms; 0 for the channel's own

  std::string address() const {
    std::string text;
    for (const auto octet : octets) {
      if (!text.empty()) text += '.';
      text += std::to_string(octet);
    }
    return text;
  }
  std::string target() const { return address() + ':' + std::to_string(port); }
};

using TcommParameters = std::variant<TusbParameters, TserialParameters, TethernetParameters>;

/// The name of what the parameters lead to, for the log: "COM5", "192.168.1.20:60601", "USB device".
inline std::string targetOf(const TcommParameters& parameters) {
  return std::visit([](const auto& transport) { return transport.target(); }, parameters);
}
