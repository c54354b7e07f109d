#include "store/recordSave.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

#include "store/datastructs.h"
#include "store/savedPair.h"
#include "support/checksum.h"
#include "support/fileSystem.h"

namespace {

/// Bytes that are written at a time.
constexpr std::size_t pieceSize = 1048576;

/// No line is longer than this: the texts, each with two quotes and a comma, or a text and a number of at most 3
/// digits.
constexpr std::size_t longestLine = textFieldsSize + 3 * textFields.size() + 8;
static_assert(maxTestProc < 1000);

/// Lines being made, up to a piece. Behind that there is room for one more line.
class Tlines {
 public:
  Tlines() : bytes_(pieceSize + longestLine, '\0'), end_(bytes_.data()) {}

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
  for (const TtextField& field : textFields) {
    if (field.id > 0) lines.append(',');
    lines.appendQuoted(record.text(field.id));
  }
  lines.append('\n');
}

/// What differs between the two files: how a record's line is made, and what failures are called.
struct TfileKind {
  void (*appendLine)(const TequipRec&, Tlines&);
  const char* writeFailed;
  const char* writeAndCloseFailed;
  const char* closeFailed;
};

// The first text for the information file names the data file, which is established wording.
constexpr TfileKind dataKind = {appendDataLine, "fprintf returned EOF on eq file where i=",
                                "fprintf() returned EOF on eq file where i=", "fclose() failed on eq file"};
constexpr TfileKind infoKind = {appendInfoLine, "fprintf returned EOF on eq file where i=",
                                "fprintf() returned EOF on eq info file where i=", "fclose() failed on eq info file"};

[[noreturn]] void failWrite(TfileWriter& writer, const TfileKind& kind, std::size_t i, const Tfailure& failure) {
  if (writer.close()) throw TERException(EREXCEPTION, kind.writeFailed + std::to_string(i), failure.text());
  throw TERException(EREXCEPTION, kind.writeAndCloseFailed + std::to_string(i) + ". And fclose failed", failure.text());
}

/// Writes one file whole, brings it to the disk and closes it. Returns the fingerprint of its content.
TfileSum writeRecords(TfileWriter& writer, const TfileKind& kind, const TequipRecTable& store, std::size_t count,
                      Tlines& lines) {
  TfileSum sum;
  const std::size_t end = std::min(count, store.count());
  for (std::size_t i = 0; i < end; ++i) {
    kind.appendLine(store.at(static_cast<TrecordIndex>(i)), lines);
    if (lines.text().size() < pieceSize && i + 1 < end) continue;
    if (const Toutcome written = writer.write(lines.text()); !written) failWrite(writer, kind, i, written.failure());
    sum = {sum.length + lines.text().size(), crc32Of(lines.text(), sum.crc)};
    lines.clear();
  }
  const Toutcome flushed = writer.flush();
  const Toutcome closed = writer.close();
  if (!flushed) throw TERException(ERCLOSEFAILED, kind.closeFailed, flushed.failure().text());
  if (!closed) throw TERException(ERCLOSEFAILED, kind.closeFailed, closed.failure().text());
  return sum;
}

void checkPaths(const std::filesystem::path& dataPath, const std::filesystem::path& infoPath) {
  if (dataPath.empty()) throw TERException(ERINVALIDINPUT, " Equipment Data Filename is NULL");
  if (infoPath.empty()) throw TERException(ERINVALIDINPUT, "Equipment Info Filename is NULL");
}

Toutcome openTemporary(TfileSystem& files, const TsavedPair::Tfile& file, std::unique_ptr<TfileWriter>& writer) {
  Toutcome writable = files.checkWritable(file.target);
  return writable ? files.create(file.temporary, file.target, writer) : writable;
}

/// Writes both temporaries. Returns 0, 2 or 3.
TERResult writePair(TfileSystem& files, const TsavedPair& pair, const TequipRecTable& store, std::size_t count,
                    TpairSums& sums) {
  std::unique_ptr<TfileWriter> data;
  std::unique_ptr<TfileWriter> info;
  if (const Toutcome opened = openTemporary(files, pair.data(), data); !opened) {
    return {ER1STFILENOTFOUND, opened.failure().text()};
  }
  if (const Toutcome opened = openTemporary(files, pair.info(), info); !opened) {
    return {ER2NDFILENOTFOUND, opened.failure().text()};
  }
  Tlines lines;
  sums.data = writeRecords(*data, dataKind, store, count, lines);
  sums.info = writeRecords(*info, infoKind, store, count, lines);
  return {};
}

}  // namespace

TERResult prepareSave(TsavedPair& pair) {
  if (const Toutcome locked = pair.lock(); !locked) return {ER1STFILENOTFOUND, locked.failure().text()};
  if (pair.recover() == TsavedPair::Trecovery::done) return {};
  return {ER1STFILENOTFOUND, "an earlier save cannot be finished"};
}

TERResult savePair(const TequipRecTable& store, std::size_t count, TsavedPair& pair, TfileSystem& files,
                   const std::function<void(const TpairSums&)>& beforeCommit) {
  TpairSums sums;
  try {
    TERResult result = writePair(files, pair, store, count, sums);
    if (result.status != ERSUCCESS) {
      pair.discard();
      return result;
    }
    pair.noteWritten();
    beforeCommit(sums);
  } catch (...) {
    pair.discard();
    throw;
  }
  pair.commit(sums);
  return {};
}

TERResult TequipRecToFile(const TequipRecTable& store, std::size_t count, const std::filesystem::path& dataPath,
                          const std::filesystem::path& infoPath, TfileSystem& files) {
  checkPaths(dataPath, infoPath);
  TsavedPair pair(files, dataPath, infoPath);
  if (TERResult prepared = prepareSave(pair); prepared.status != ERSUCCESS) return prepared;
  return savePair(store, count, pair, files, [](const TpairSums&) {});
}
