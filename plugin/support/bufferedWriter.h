#pragma once

#include <string>

#include "support/fileSystem.h"

/// A file writer that gathers small writes to larger ones. The platform's own puts the bytes into the file.
class TbufferedWriter : public TfileWriter {
 public:
  bool write(std::string_view bytes) final {
    if (buffer_.size() + bytes.size() > bufferSize && !drain()) return false;
    if (bytes.size() > bufferSize) return put(bytes);
    buffer_.append(bytes);
    return true;
  }

 protected:
  /// Writes what still waits. False: it could not all be written.
  bool drain() {
    const bool written = buffer_.empty() || put(buffer_);
    buffer_.clear();
    return written;
  }

  /// Writes all of the bytes, or false.
  virtual bool put(std::string_view bytes) = 0;

 private:
  static constexpr std::size_t bufferSize = 65536;

  std::string buffer_;
};
