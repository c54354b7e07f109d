#include "import/rowReader.h"

#include <utility>

TrowReader::TrowReader(std::istream& file, const TimportOptions& options, std::function<bool()> goOn)
    : lines_(file, std::move(goOn)), delimiter_(options.delimiter), quotes_(options.quotes) {}

bool TrowReader::next(TimportRow& row) {
  const auto line = lines_.next();
  if (!line) return false;
  ++number_;
  row.fields = tokenise(*line, delimiter_, quotes_, std::move(row.fields));
  return true;
}
