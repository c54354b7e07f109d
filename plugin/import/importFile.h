#pragma once

#include <cstdint>
#include <fstream>
#include <optional>
#include <string>

#include "import/importOptions.h"

class TlineReader;

/// A file that is imported, open for reading as long as this lives. Nothing but a regular file can be opened.
class TimportFile {
 public:
  explicit TimportFile(const std::filesystem::path& path);

  bool isOpen() const { return stream_.is_open(); }
  std::istream& stream() { return stream_; }
  /// Bytes when it was opened.
  std::uint64_t size() const { return size_; }

 private:
  std::ifstream stream_;
  std::uint64_t size_ = 0;
};

/// Reads lines from the first one on, so that the start row is the next. Returns the last line read.
std::string skipToStartRow(TlineReader& reader, int startRow);

/// The lines by which the user chooses the columns; each is empty where the file does not have it.
struct TimportSample {
  std::string headings;  ///< the line before the first one that is imported
  std::string line;      ///< the first line that is imported

  /// Nothing where the file cannot be read.
  static std::optional<TimportSample> read(const TimportOptions& options);
};
