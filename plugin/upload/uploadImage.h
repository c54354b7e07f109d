#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "comm/commParameters.h"

class TequipRecTable;

inline constexpr std::size_t uploadBlockSize = 264;
inline constexpr std::size_t uploadBlockCount = 1536;
inline constexpr std::size_t uploadImageSize = uploadBlockSize * uploadBlockCount;
inline constexpr std::size_t uploadEntrySize = 22;
inline constexpr unsigned uploadTimeOut = 2000;  ///< ms

/// One record in the analyzer's format: Device ID padded with blanks (bytes 0-16), a zero byte (17) unless the ID has
/// 18 characters, the test procedure number (18-19, low byte first), 0xFF twice.
using TuploadEntry = std::array<std::uint8_t, uploadEntrySize>;

TuploadEntry makeUploadEntry(std::string_view deviceId, std::uint16_t number);

/// All records of the table, in its order.
std::vector<TuploadEntry> makeUploadEntries(const TequipRecTable& records);

/// What an upload sends, and to which address or port.
struct TuploadCommStruct {
  /// Builds the image of these entries, which stay the caller's. Throws `std::length_error` if the image cannot hold
  /// them.
  TuploadCommStruct(TcommMethod method, std::int32_t serialPort, const std::array<std::int32_t, 4>& octets,
                    const std::vector<TuploadEntry>& entries);

  TcommMethod method;
  std::int32_t serialPort;             ///< the number in "COM5"
  std::array<std::int32_t, 4> octets;  ///< of the Ethernet address, most significant first
  const std::vector<TuploadEntry>* entries;
  std::vector<std::uint8_t> image;  ///< `uploadImageSize` bytes, 0xFF behind the last entry
};

/// The channel's mode and parameters for an upload; mode none for an unknown method.
struct TuploadTransport {
  TcommMode mode = TcommMode::none;
  TcommParameters parameters;
};
TuploadTransport transportOf(const TuploadCommStruct& upload);

/// The port number in the text of a port ("COM5"): the number after any three characters, or 1 if there is none.
std::int32_t serialPortNumber(std::string_view portText);
