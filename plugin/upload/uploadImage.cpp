#include "upload/uploadImage.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <string>

#include "store/datastructs.h"

namespace {

constexpr std::size_t idSize = 17;
constexpr std::size_t numberPlace = 18;
constexpr std::uint8_t filler = 0xFF;

void copyBytes(std::string_view from, std::uint8_t* to) {
  std::transform(from.begin(), from.end(), to, [](char byte) { return static_cast<std::uint8_t>(byte); });
}

/// Writes an entry into the image. Its ID ends after 17 bytes, or earlier at a zero byte.
void putEntry(const TuploadEntry& entry, std::uint8_t* place) {
  std::fill_n(place, idSize + 1, std::uint8_t{0});
  std::copy(entry.begin(), std::find(entry.begin(), entry.begin() + idSize, 0), place);
  std::copy(entry.begin() + numberPlace, entry.end(), place + numberPlace);
}

TserialParameters serialParameters(std::int32_t number) {
  TserialParameters parameters;
  const std::string name = "COM" + std::to_string(number);
  std::copy_n(name.begin(), std::min(name.size(), parameters.portName.size() - 1), parameters.portName.begin());
  return parameters;
}

TethernetParameters ethernetParameters(const std::array<std::int32_t, 4>& octets) {
  TethernetParameters parameters;
  std::transform(octets.begin(), octets.end(), parameters.octets.begin(),
                 [](std::int32_t octet) { return static_cast<std::uint8_t>(octet); });
  return parameters;
}

}  // namespace

TuploadEntry makeUploadEntry(std::string_view deviceId, std::uint16_t number) {
  TuploadEntry entry{};
  std::fill_n(entry.begin(), idSize, std::uint8_t{' '});
  copyBytes(deviceId.substr(0, deviceId.size() == idSize + 1 ? idSize + 1 : idSize), entry.data());
  entry[numberPlace] = static_cast<std::uint8_t>(number & 0xFFU);
  entry[numberPlace + 1] = static_cast<std::uint8_t>(number >> 8U);
  std::fill(entry.begin() + numberPlace + 2, entry.end(), filler);
  return entry;
}

std::vector<TuploadEntry> makeUploadEntries(const TequipRecTable& records) {
  std::vector<TuploadEntry> entries;
  entries.reserve(records.count());
  for (TrecordIndex index = 0; index < records.count(); ++index) {
    const TequipRec& record = records.at(index);
    entries.push_back(makeUploadEntry(record.text(fieldControlNum), static_cast<std::uint16_t>(record.testProc())));
  }
  return entries;
}

TuploadCommStruct::TuploadCommStruct(TcommMethod method_, std::int32_t serialPort_,
                                     const std::array<std::int32_t, 4>& octets_,
                                     const std::vector<TuploadEntry>& entries_)
    : method(method_), serialPort(serialPort_), octets(octets_), entries(&entries_), image(uploadImageSize, filler) {
  if (entries_.size() * uploadEntrySize > image.size()) throw std::length_error("too many upload entries");
  std::uint8_t* place = image.data();
  for (const TuploadEntry& entry : entries_) {
    putEntry(entry, place);
    place += uploadEntrySize;
  }
}

TuploadTransport transportOf(const TuploadCommStruct& upload) {
  const TcommMode mode = commMethodBy(&TcommMethodEntry::method, upload.method).mode;
  if (mode == TcommMode::ethernet) return {mode, ethernetParameters(upload.octets)};
  if (mode == TcommMode::serial) return {mode, serialParameters(upload.serialPort)};
  return {mode, TusbParameters()};
}

std::int32_t serialPortNumber(std::string_view portText) {
  constexpr std::size_t prefix = 3;
  std::int32_t number = 1;
  if (portText.size() > prefix) std::from_chars(portText.data() + prefix, portText.data() + portText.size(), number);
  return number;
}
