#include "import/importFile.h"

#include "import/lineReader.h"
#include "support/fileSystem.h"

TimportFile::TimportFile(const std::filesystem::path& path) {
  const auto stamp = diskFileSystem().stamp(path);
  if (!stamp) return;
  size_ = stamp->length;
  stream_.open(path, std::ios::binary);
}

std::string skipToStartRow(TlineReader& reader, int startRow) {
  std::string last;
  for (int row = 1; row < startRow; ++row) last = reader.next().value_or(std::string_view());
  return last;
}

std::optional<TimportSample> TimportSample::read(const TimportOptions& options) {
  TimportFile file(options.fileName);
  if (!file.isOpen()) return std::nullopt;
  TlineReader reader(file.stream());
  TimportSample sample;
  sample.headings = skipToStartRow(reader, options.startRow);
  sample.line = reader.next().value_or(std::string_view());
  return reader.failed() ? std::nullopt : std::optional(sample);
}
