// Prints the rows of files as the import reads them; fuzz/compare-readers compares them with another reader's.
//
// Each line of the standard input names a file: MODE CHARSET DELIMITER FILE, the mode l (lines), q (lines with quotes)
// or s (as spreadsheets write them), the others as numbers. A row is printed as its fields in hexadecimal, what was
// replaced as COLUMN:CHARACTER, and a letter for each flag that is set. The character set that was detected ends each
// file.
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "import/rowReader.h"

namespace {

void printRow(const TimportRow& row) {
  for (std::size_t i = 1; i < row.fields.size(); ++i) {
    for (const char c : row.fields[i]) std::printf("%02x", static_cast<unsigned>(static_cast<unsigned char>(c)));
    std::putchar(',');
  }
  for (const TreplacedCharacter& one : row.replaced) {
    std::printf(" %zu:%x", one.column, static_cast<unsigned>(one.character));
  }
  std::printf(" %s%s%s\n", row.isCut ? "C" : "", row.isQuoteOpen ? "Q" : "", row.hasOtherBreak ? "B" : "");
}

bool printFile(std::istringstream job) {
  char mode = 0;
  int charset = 0;
  int delimiter = 0;
  TimportOptions options;
  job >> mode >> charset >> delimiter >> options.fileName;
  options.spreadsheet = mode == 's';
  options.quotes = mode == 'q';
  options.charset = charsetOf(charset);
  options.delimiter = static_cast<char>(delimiter);
  std::ifstream file(options.fileName, std::ios::binary);
  const int detected = static_cast<int>(detectCharset(file));
  TrowReader reader(file, options);
  TimportRow row;
  while (reader.next(row)) printRow(row);
  std::printf("detected %d\n", detected);
  return file.is_open() && !reader.failed();
}

}  // namespace

int main() {
  std::string job;
  while (std::getline(std::cin, job)) {
    if (printFile(std::istringstream(job))) continue;
    std::fprintf(stderr, "cannot be read: %s\n", job.c_str());
    return 1;
  }
  return 0;
}
