#include "store/recordSave.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "store/datastructs.h"
#include "store/savedPair.h"
#include "support/checksum.h"
#include "support/fileSystem.h"

namespace {

/// Bytes that are worth a write of their own.
constexpr std::size_t pieceSize = 1048576;

/// Lines being made, up to a piece. Behind that there is room for one line more, with all texts at their longest.
class Tlines {
 public:
  Tlines() : bytes_(pieceSize + 512, '\0'), end_(bytes_.data()) {}

  std::string_view text() const { return {bytes_.data(), static_cast<std::size_t>(end_ - bytes_.data())}; }
  void clear() { end_ = bytes_.data(); }

  void append(char character) { *end_++ = character; }
  void append(std::string_view text) { end_ = std::copy(text.begin(), text.end(), end_); }
  void appendQuoted(std::string_view text) {
    append('"');
    append(text);
    append('"');
  }

 private:
  std::string bytes_;
  char* end_;
};

void appendDataLine(const TequipRec& record, Tlines& lines) {
  lines.appendQuoted(record.text(fieldControlNum));
  lines.append(',');
  lines.append(std::to_string(record.testProc()));
  lines.append('\n');
}

void appendInfoLine(const TequipRec& record, Tlines& lines) {
  for (int id = fieldControlNum; id < fieldCount; ++id) {
    if (id != fieldControlNum) lines.append(',');
    lines.appendQuoted(record.text(id));
  }
  lines.append('\n');
}

/// What is different about the two files: how a record's line is made, and what failures are called.
struct TfileKind {
  void (*appendLine)(const TequipRec&, Tlines&);
  const char* writeFailed;
  const char* writeAndCloseFailed;
  const char* closeFailed;
};

// The first text of the information file names the data file: established wording.
constexpr TfileKind dataKind = {appendDataLine, "fprintf returned EOF on eq file where i=",
                                "fprintf() returned EOF on eq file where i=", "fclose() failed on eq file"};
constexpr TfileKind infoKind = {appendInfoLine, "fprintf returned EOF on eq file where i=",
                                "fprintf() returned EOF on eq info file where i=", "fclose() failed on eq info file"};

[[noreturn]] void failWrite(TfileWriter& writer, const TfileKind& kind, std::size_t i) {
  if (writer.close()) throw TERException(EREXCEPTION, kind.writeFailed + std::to_string(i));
  throw TERException(EREXCEPTION, kind.writeAndCloseFailed + std::to_string(i) + ". And fclose failed");
}

/// Writes one file whole, brings it to the disk and closes it. Returns what it then holds.
TfileSum writeRecords(TfileWriter& writer, const TfileKind& kind, const TequipRecTable& store, std::size_t count,
                      Tlines& lines) {
  TfileSum sum;
  const std::size_t end = std::min(count, store.count());
  for (std::size_t i = 0; i < end; ++i) {
    kind.appendLine(store.at(static_cast<TrecordIndex>(i)), lines);
    if (lines.text().size() < pieceSize && i + 1 < end) continue;
    if (!writer.write(lines.text())) failWrite(writer, kind, i);
    sum = {sum.length + lines.text().size(), crc32Of(lines.text(), sum.crc)};
    lines.clear();
  }
  const bool flushed = writer.flush();
  if (!writer.close() || !flushed) throw TERException(ERCLOSEFAILED, kind.closeFailed);
  return sum;
}

void checkPaths(const std::filesystem::path& dataPath, const std::filesystem::path& infoPath) {
  if (dataPath.empty()) throw TERException(ERINVALIDINPUT, " Equipment Data Filename is NULL");
  if (infoPath.empty()) throw TERException(ERINVALIDINPUT, "Equipment Info Filename is NULL");
}

std::unique_ptr<TfileWriter> openTemporary(TfileSystem& files, const TsavedPair::Tfile& file) {
  return files.isWritable(file.target) ? files.create(file.temporary, file.target) : nullptr;
}

/// Writes both temporaries. Returns 0, 2 or 3.
TERStatus writePair(TfileSystem& files, const TsavedPair& pair, const TequipRecTable& store, std::size_t count,
                    TfileSum& dataSum, TfileSum& infoSum) {
  const auto data = openTemporary(files, pair.data());
  if (!data) return ER1STFILENOTFOUND;
  const auto info = openTemporary(files, pair.info());
  if (!info) return ER2NDFILENOTFOUND;
  Tlines lines;
  dataSum = writeRecords(*data, dataKind, store, count, lines);
  infoSum = writeRecords(*info, infoKind, store, count, lines);
  return ERSUCCESS;
}

}  // namespace

TERStatus TequipRecToFile(const TequipRecTable& store, std::size_t count, const std::filesystem::path& dataPath,
                          const std::filesystem::path& infoPath, TfileSystem& files,
                          const std::function<void()>& beforeCommit) {
  checkPaths(dataPath, infoPath);
  TsavedPair pair(files, dataPath, infoPath);
  // An earlier save that is decided and still waits must not lose its files to this one.
  if (!pair.recover()) return ER1STFILENOTFOUND;

  TfileSum dataSum;
  TfileSum infoSum;
  try {
    const TERStatus status = writePair(files, pair, store, count, dataSum, infoSum);
    if (status != ERSUCCESS) {
      pair.discard();
      return status;
    }
    if (beforeCommit) beforeCommit();
  } catch (...) {
    pair.discard();
    throw;
  }
  pair.commit(dataSum, infoSum);
  return ERSUCCESS;
}
