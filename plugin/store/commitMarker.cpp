#include "store/commitMarker.h"

#include <iomanip>
#include <locale>
#include <sstream>

#include "support/checksum.h"

namespace {

constexpr std::string_view heading = "EQCOMMIT2";
/// The heading of release 0.1. Its lines name the record files themselves.
constexpr std::string_view oldHeading = "EQCOMMIT1";

std::string line(const std::string& name, const TfileSum& sum) {
  std::ostringstream out;
  out.imbue(std::locale::classic());  // the host's locale may group digits
  out << std::dec << sum.length << ' ' << std::hex << std::setw(8) << std::setfill('0') << sum.crc << ' ' << name;
  return out.str();
}

/// Reads what `line` writes. Writing the marker again checks all of it.
void readLine(std::istream& in, std::string& name, TfileSum& sum) {
  in >> std::dec >> sum.length >> std::hex >> sum.crc >> std::ws;
  std::getline(in, name);
}

std::string textOf(const TcommitMarker& marker, std::string_view first) {
  const std::string text = std::string(first) + '\n' + line(marker.dataTemporary, marker.sums.data) + '\n' +
                           line(marker.infoTemporary, marker.sums.info) + '\n';
  return text + line("end", sumOf(text)) + '\n';
}

}  // namespace

TfileSum sumOf(std::string_view content) {
  return {content.size(), crc32Of(content)};
}

std::string TcommitMarker::toText() const {
  return textOf(*this, heading);
}

std::optional<TcommitMarker> TcommitMarker::fromText(std::string_view text) {
  std::istringstream in{std::string(text)};
  in.imbue(std::locale::classic());
  std::string first;
  std::getline(in, first);
  TcommitMarker marker;
  readLine(in, marker.dataTemporary, marker.sums.data);
  readLine(in, marker.infoTemporary, marker.sums.info);
  const bool known = first == heading || first == oldHeading;
  if (!in || !known || textOf(marker, first) != text) return std::nullopt;
  if (first == oldHeading) {
    marker.dataTemporary += ".new";
    marker.infoTemporary += ".new";
  }
  return marker;
}
