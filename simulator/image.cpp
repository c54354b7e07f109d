#include "simulator/image.h"

#include <algorithm>

namespace {

constexpr qsizetype entrySize = 22;
constexpr qsizetype idSize = 17;
constexpr qsizetype procedureAt = 18;
constexpr qsizetype tailAt = 20;
constexpr int maxProcedure = 500;
constexpr qsizetype maxErrors = 10;
constexpr char filler = '\xFF';

bool isFiller(const QByteArray& bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char each) { return each == filler; });
}

int procedureOf(const QByteArray& entry) {
  const auto byte = [&](qsizetype at) { return static_cast<unsigned char>(entry[at]); };
  return byte(procedureAt) + byte(procedureAt + 1) * 256;
}

QByteArray deviceIdOf(const QByteArray& entry) {
  qsizetype size = idSize;
  while (size > 0 && entry[size - 1] == ' ') --size;
  return entry.first(size);
}

QByteArray faultOf(const QByteArray& entry) {
  const int procedure = procedureOf(entry);
  if (entry.first(idSize).contains('\0')) return "a zero byte in the device ID";
  if (entry[idSize] != '\0') return "byte 17 is not zero";
  if (procedure < 1 || procedure > maxProcedure) return "procedure " + QByteArray::number(procedure);
  if (!isFiller(entry.sliced(tailAt))) return "bytes 20 and 21 are not filler";
  return {};
}

}  // namespace

TdecodedImage decodeImage(const QByteArray& image) {
  TdecodedImage decoded;
  bool ended = false;
  for (qsizetype at = 0; at < image.size() && decoded.errors.size() < maxErrors; at += entrySize) {
    const QByteArray entry = image.sliced(at, entrySize);
    const bool isEnd = isFiller(entry);
    const QByteArray fault = isEnd ? QByteArray() : ended ? "it follows the filler" : faultOf(entry);
    if (!fault.isEmpty()) decoded.errors << "entry " + QByteArray::number(at / entrySize + 1) + ": " + fault;
    if (!isEnd) decoded.records.push_back({deviceIdOf(entry), procedureOf(entry)});
    ended = ended || isEnd;
  }
  return decoded;
}

QByteArray describe(const TuploadedRecord& record, qsizetype number) {
  QByteArray line = "record " + QByteArray::number(number) + ": ";
  for (const char each : record.deviceId) {
    const bool isControl = static_cast<unsigned char>(each) < ' ' || each == '\x7F';
    line += isControl ? "\\x" + QByteArray(1, each).toHex() : QByteArray(1, each);
  }
  return line + ", procedure " + QByteArray::number(record.procedure);
}
