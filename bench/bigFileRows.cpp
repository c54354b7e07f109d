#include <QCoreApplication>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>

#include "bench/bareImport.h"
#include "bench/program.h"
#include "bench/rows.h"
#include "import/importFile.h"

namespace {

constexpr std::size_t bigFileSize = 500'000'000;
constexpr std::size_t repeatedLines = 10'000;    // fewer than the table holds, so that an import reads all of the file
constexpr double mostForPreviewOfBigFile = 100;  // milliseconds
constexpr double mostMemory = 64;                // megabytes

/// A file as spreadsheets write it, in UTF-8; removed with this object.
class TbigFile {
 public:
  explicit TbigFile(const TbenchFolders& folders) : path_(folders.scratch / "big.csv") {
    const std::string rows = contentOf(makeSpreadsheet(folders, repeatedLines));
    std::ofstream file(path_, std::ios::binary);
    for (std::size_t size = 0; size < bigFileSize; size += rows.size()) {
      file << rows;
      lines_ += repeatedLines;
    }
    require(file.good(), "the big file cannot be written");
  }
  TbigFile(const TbigFile&) = delete;
  TbigFile& operator=(const TbigFile&) = delete;
  ~TbigFile() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }

  const std::filesystem::path& path() const { return path_; }
  std::size_t lines() const { return lines_; }

 private:
  std::filesystem::path path_;
  std::size_t lines_ = 0;
};

/// What the dialogs read of a file before they show it.
double measureSample(const TbigFile& big) {
  return millisecondsOf([&] {
    const TimportOptions options = optionsOfSpreadsheet(big.path());
    TimportFile file(options);
    require(detectCharset(file.stream()) == Tcharset::utf8, "the character set was not detected");
    const auto sample = TimportSample::read(options);
    require(sample && sample->rows.size() == TimportSample::mostRows, "rows are missing");
    require(sample->columnCount() == importColumns, "the first row was misread");
  });
}

/// Megabytes that an import of the whole file takes at most.
double measureBigImport(const TbigFile& big, const std::filesystem::path& output) {
  const auto program = QCoreApplication::applicationDirPath().toStdString() + "/eqrec-big-import";
  runProgram({program, big.path().string()}, "/dev/null", output);
  std::istringstream result(contentOf(output));
  std::size_t lines = 0;
  double kilobytes = 0;
  result >> lines >> kilobytes;
  require(lines == big.lines() && kilobytes > 0, "the big file was not read whole");
  return kilobytes / 1024;
}

Tsides prepareSample(const TbenchFolders& folders) {
  const auto big = std::make_shared<TbigFile>(folders);
  return {[=] { return measureSample(*big); }, [] { return mostForPreviewOfBigFile; }};
}

Tsides prepareMemory(const TbenchFolders& folders) {
  const auto big = std::make_shared<TbigFile>(folders);
  const auto output = folders.scratch / "memory.txt";
  return {[=] { return measureBigImport(*big, output); }, [] { return mostMemory; }};
}

}  // namespace

std::vector<Trow> bigFileRows(const TbenchFolders& folders) {
  return {{"import-preview-500-mb", "ms", 1.0, 5, [folders] { return prepareSample(folders); }},
          {"import-memory-500-mb", "MB", 1.0, 2, [folders] { return prepareMemory(folders); }}};
}
