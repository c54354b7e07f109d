#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Fingerprint of a file: length in bytes and CRC-32 (the one of zip).
struct TfileSum {
  std::uint64_t length = 0;
  std::uint32_t crc = 0;

  bool operator==(const TfileSum&) const = default;
};

TfileSum sumOf(std::string_view content);

/// Fingerprints of both record files.
struct TpairSums {
  TfileSum data;
  TfileSum info;

  bool operator==(const TpairSums&) const = default;
};

/// The small file that decides a save: it names both new record files and holds their fingerprints.
struct TcommitMarker {
  /// File names, without their folders, from which both are renamed into place.
  std::string dataTemporary;
  std::string infoTemporary;
  TpairSums sums;

  /// The marker as text; docs/file-formats.md shows it.
  std::string toText() const;
  /// The marker that `text` holds; nothing unless it is whole to the last byte. Reads the markers of release 0.1, too.
  static std::optional<TcommitMarker> fromText(std::string_view text);
};
