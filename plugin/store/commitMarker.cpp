#include "store/commitMarker.h"

#include <iomanip>
#include <locale>
#include <sstream>

#include "support/checksum.h"

namespace {

constexpr std::string_view heading = "EQCOMMIT1";

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

}  // namespace

TfileSum sumOf(std::string_view content) {
  return {content.size(), crc32Of(content)};
}

std::string TcommitMarker::toText() const {
  const std::string text = std::string(heading) + '\n' + line(dataName, data) + '\n' + line(infoName, info) + '\n';
  return text + line("end", sumOf(text)) + '\n';
}

std::optional<TcommitMarker> TcommitMarker::fromText(std::string_view text) {
  std::istringstream in{std::string(text)};
  in.imbue(std::locale::classic());
  std::string first;
  std::getline(in, first);
  TcommitMarker marker;
  readLine(in, marker.dataName, marker.data);
  readLine(in, marker.infoName, marker.info);
  return in && marker.toText() == text ? std::optional(marker) : std::nullopt;
}
