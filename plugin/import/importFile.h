#pragma once

#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "import/importOptions.h"
#include "import/rowReader.h"

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

/// The first 64 KB of a file, or all of a shorter one; nothing if it cannot be read.
std::string startOf(const std::filesystem::path& fileName);

/// The file's extension, as the log names the file: ".csv".
std::string extensionOf(const TimportOptions& options);

/// Reads the rows before the start row.
void skipToStartRow(TrowReader& reader, int startRow);

/// A row with texts of its own.
class TsampleRow {
 public:
  TsampleRow() = default;  ///< without fields
  TsampleRow(const TimportRow& row, std::size_t number);

  /// Valid as long as this object is.
  TimportRow row() const;
  TfieldList fields() const { return row().fields; }
  std::size_t number() const { return number_; }  ///< in the file, counted from 1

 private:
  TimportRow row_;  ///< without its fields
  std::vector<std::string> texts_ = std::vector<std::string>(1);
  std::size_t number_ = 0;
};

/// The rows by which the user chooses the columns. Rows that the file lacks have no fields.
struct TimportSample {
  static constexpr std::size_t mostRows = 20;

  TsampleRow first;              ///< of the file
  TsampleRow headings;           ///< the row before the first one that is imported
  std::vector<TsampleRow> rows;  ///< from the first one that is imported

  std::size_t columnCount() const { return rows.empty() ? 0 : rows.front().fields().size() - 1; }

  /// Nothing when the file cannot be read.
  static std::optional<TimportSample> read(const TimportOptions& options);
};
