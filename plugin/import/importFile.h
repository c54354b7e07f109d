#pragma once

#include <cstdint>
#include <fstream>
#include <optional>
#include <string>

#include "import/importOptions.h"

class TlineReader;

/// The file to import, open while this object exists. Only a regular file can be opened; a failure is logged.
class TimportFile {
 public:
  explicit TimportFile(const TimportOptions& options);

  bool isOpen() const { return stream_.is_open(); }
  std::istream& stream() { return stream_; }
  /// Its size in bytes when it was opened.
  std::uint64_t size() const { return size_; }

 private:
  std::ifstream stream_;
  std::uint64_t size_ = 0;
};

/// The file's extension, as the log names the file: ".csv".
std::string extensionOf(const TimportOptions& options);

/// Reads the lines before the start row. Returns the last of them.
std::string skipToStartRow(TlineReader& reader, int startRow);

/// The lines by which the user chooses the columns. A line that the file lacks is empty.
struct TimportSample {
  std::string headings;  ///< the line before the first one that is imported
  std::string line;      ///< the first line that is imported

  /// Nothing when the file cannot be read.
  static std::optional<TimportSample> read(const TimportOptions& options);
};
