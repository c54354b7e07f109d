#include "support/checksum.h"

#include <zlib.h>

std::uint32_t crc32Of(std::string_view bytes, std::uint32_t before) {
  if (bytes.empty()) return before;  // zlib may take no bytes for a request to start again
  const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
  return static_cast<std::uint32_t>(crc32_z(before, data, bytes.size()));
}
