#include "import/tokeniser.h"

#include <utility>

namespace {

/// Removes the text up to `end` from the front of `rest`, together with `end`, and returns it without `end`. Takes all
/// of `rest` when it has no `end`.
std::string_view takeUntil(char end, std::string_view& rest) {
  const std::size_t length = rest.find(end);
  const std::string_view taken = rest.substr(0, length);
  rest.remove_prefix(length == std::string_view::npos ? rest.size() : length + 1);
  return taken;
}

void splitQuoted(std::string_view rest, TfieldList& fields) {
  while (!rest.empty()) {
    takeUntil('"', rest);
    if (rest.find('"') == std::string_view::npos) return;
    fields.push_back(takeUntil('"', rest));
  }
}

}  // namespace

TfieldList tokenise(std::string_view line, char delimiter, bool quotes, TfieldList used) {
  TfieldList fields = std::move(used);
  fields.clear();
  fields.emplace_back();
  if (quotes) {
    splitQuoted(line, fields);
  } else {
    while (!line.empty()) fields.push_back(takeUntil(delimiter, line));
  }
  return fields;
}
