#include "import/importFile.h"

#include <cerrno>
#include <system_error>

#include "import/lineReader.h"
#include "support/failure.h"
#include "support/fileSystem.h"
#include "support/log.h"

TimportFile::TimportFile(const TimportOptions& options) {
  errno = 0;
  if (const auto stamp = diskFileSystem().stamp(options.fileName)) {
    size_ = stamp->length;
    stream_.open(options.fileName, std::ios::binary);
  }
  if (isOpen()) return;
  const std::string reason = errno == 0 ? "not a readable file" : std::generic_category().message(errno);
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
