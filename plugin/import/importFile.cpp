#include "import/importFile.h"

#include <cerrno>
#include <system_error>

#include "import/lineReader.h"
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

std::string extensionOf(const TimportOptions& options) {
  const std::u8string extension = options.fileName.extension().u8string();
  return {extension.begin(), extension.end()};
}

std::string skipToStartRow(TlineReader& reader, int startRow) {
  std::string last;
  for (int row = 1; row < startRow; ++row) last = reader.next().value_or(std::string_view());
  return last;
}

std::optional<TimportSample> TimportSample::read(const TimportOptions& options) {
  TimportFile file(options);
  if (!file.isOpen()) return std::nullopt;
  TlineReader reader(file.stream());
  TimportSample sample;
  sample.headings = skipToStartRow(reader, options.startRow);
  sample.line = reader.next().value_or(std::string_view());
  return reader.failed() ? std::nullopt : std::optional(sample);
}
