#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// All of `bytes`, at most 8, as one number.
inline std::uint64_t littleEndian(std::string_view bytes) {
  std::uint64_t number = 0;
  for (std::size_t i = bytes.size(); i > 0; --i) number = number << 8U | static_cast<unsigned char>(bytes[i - 1]);
  return number;
}

/// Appends a number as `size` bytes.
inline void appendLittleEndian(std::string& bytes, std::uint64_t number, int size) {
  for (; size > 0; --size, number >>= 8U) bytes += static_cast<char>(number & 0xFFU);
}

/// Takes bytes off a text that may be damaged. Once something is wrong, it gives zeros and empty texts.
class TbyteReader {
 public:
  explicit TbyteReader(std::string_view bytes) : rest_(bytes) {}

  bool isGood() const { return good_; }
  std::string_view rest() const { return rest_; }

  std::string_view take(std::size_t size) {
    require(size <= rest_.size());
    if (!good_) return {};
    const std::string_view taken = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return taken;
  }
  std::uint64_t number(std::size_t size) { return littleEndian(take(size)); }

  /// Whoever reads has found something wrong unless `holds`.
  void require(bool holds) { good_ = good_ && holds; }

 private:
  std::string_view rest_;
  bool good_ = true;
};
