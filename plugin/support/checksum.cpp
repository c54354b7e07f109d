#include "support/checksum.h"

#include <zlib.h>

std::uint32_t crc32Of(std::string_view bytes, std::uint32_t before) {
  if (bytes.empty()) return before;  // to zlib, no bytes at all may mean "begin anew"
  const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
  return static_cast<std::uint32_t>(crc32_z(before, data, bytes.size()));
}
