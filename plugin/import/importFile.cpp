#include "import/importFile.h"

#include <cerrno>
#include <system_error>

#include "support/failure.h"
#include "support/log.h"
#include "support/uninterrupted.h"

TimportFile::TimportFile(const TimportOptions& options) {
  std::error_code error;
  const auto& path = options.fileName;
  errno = 0;
  // Not by `TfileSystem`, which logs the path of a file that cannot be looked at.
  if (uninterrupted(error, [&](std::error_code& e) { return std::filesystem::is_regular_file(path, e); })) {
    size_ = uninterrupted(error, [&](std::error_code& e) { return std::filesystem::file_size(path, e); });
    if (!error) stream_.open(path, std::ios::binary);
  }
  if (isOpen()) return;
  if (!error) error.assign(errno, std::generic_category());
  const std::string reason = error ? error.message() : "not a readable file";
  logFailure(Tfailure{"open", "import file " + extensionOf(options), reason}.text());
}

std::string startOf(const std::filesystem::path& fileName) {
  TimportFile file(TimportOptions{fileName});
  std::string start(fileStartSize, '\0');
  file.stream().read(start.data(), static_cast<std::streamsize>(start.size()));
  start.resize(file.isOpen() ? static_cast<std::size_t>(file.stream().gcount()) : 0);
  return start;
}

std::string extensionOf(const TimportOptions& options) {
  const std::u8string extension = options.fileName.extension().u8string();
  return {extension.begin(), extension.end()};
}

void skipToStartRow(TrowReader& reader, int startRow) {
  TimportRow row;
  for (int number = 1; number < startRow && reader.next(row);) ++number;
}

TsampleRow::TsampleRow(const TimportRow& row, std::size_t number)
    : row_(row), texts_(row.fields.begin(), row.fields.end()), number_(number) {
  row_.fields.clear();
}

TimportRow TsampleRow::row() const {
  TimportRow row = row_;
  row.fields.assign(texts_.begin(), texts_.end());
  return row;
}

std::optional<TimportSample> TimportSample::read(const TimportOptions& options) {
  TimportFile file(options);
  if (!file.isOpen()) return std::nullopt;
  TrowReader reader(file.stream(), options);
  TimportSample sample;
  TimportRow row;
  const auto start = static_cast<std::size_t>(options.startRow);
  while (sample.rows.size() < mostRows && reader.next(row)) {
    const TsampleRow read(row, reader.number());
    if (read.number() == 1) sample.first = read;
    if (read.number() + 1 == start) sample.headings = read;
    if (read.number() >= start) sample.rows.push_back(read);
  }
  return reader.failed() ? std::nullopt : std::optional(std::move(sample));
}
