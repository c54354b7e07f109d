#pragma once

#include <string>

#include "support/fileSystem.h"

/// A file writer that joins small writes to larger ones. A derived class puts the bytes into the file.
class TbufferedWriter : public TfileWriter {
 public:
  Toutcome write(std::string_view bytes) final {
    if (buffer_.size() + bytes.size() > bufferSize) {
      if (Toutcome drained = drain(); !drained) return drained;
    }
    if (bytes.size() > bufferSize) return put(bytes);
    buffer_.append(bytes);
    return {};
  }

 protected:
  /// Writes what is still buffered.
  Toutcome drain() {
    Toutcome written = buffer_.empty() ? Toutcome() : put(buffer_);
    buffer_.clear();
    return written;
  }

  /// Writes all of the bytes.
  virtual Toutcome put(std::string_view bytes) = 0;

 private:
  static constexpr std::size_t bufferSize = 65536;

  std::string buffer_;
};
