#include "store/recordSave.h"

#include <algorithm>
#include <boost/crc.hpp>
#include <string>
#include <string_view>

#include "store/datastructs.h"
#include "store/savedPair.h"
#include "support/fileSystem.h"

namespace {

void appendQuoted(std::string& line, const char* text) {
  line.append(1, '"').append(text).append(1, '"');
}

void formatDataLine(const TequipRec& record, std::string& line) {
  appendQuoted(line, record.text(fieldControlNum));
  line.append(1, ',').append(std::to_string(record.testProc())).append(1, '\n');
}

void formatInfoLine(const TequipRec& record, std::string& line) {
  for (int id = fieldControlNum; id < fieldCount; ++id) {
    if (id != fieldControlNum) line.append(1, ',');
    appendQuoted(line, record.text(id));
  }
  line.append(1, '\n');
}

/// What is different about the two files: how a record's line is made, and what failures are called.
struct TfileKind {
  void (*formatLine)(const TequipRec&, std::string&);
  const char* writeFailed;
  const char* writeAndCloseFailed;
  const char* closeFailed;
};

// The first text of the information file names the data file: established wording.
constexpr TfileKind dataKind = {formatDataLine, "fprintf returned EOF on eq file where i=",
                                "fprintf() returned EOF on eq file where i=", "fclose() failed on eq file"};
constexpr TfileKind infoKind = {formatInfoLine, "fprintf returned EOF on eq file where i=",
                                "fprintf() returned EOF on eq info file where i=", "fclose() failed on eq info file"};

[[noreturn]] void failWrite(TfileWriter& writer, const TfileKind& kind, std::size_t i) {
  if (writer.close()) throw TERException(EREXCEPTION, kind.writeFailed + std::to_string(i));
  throw TERException(EREXCEPTION, kind.writeAndCloseFailed + std::to_string(i) + ". And fclose failed");
}

/// Writes one file whole, brings it to the disk and closes it. Returns what it then holds.
TfileSum writeRecords(TfileWriter& writer, const TfileKind& kind, const TequipRecTable& store, std::size_t count) {
  TfileSum sum;
  boost::crc_32_type crc;
  std::string line;
  for (std::size_t i = 0; i < count && i < store.count(); ++i) {
    line.clear();
    kind.formatLine(store.at(static_cast<TrecordIndex>(i)), line);
    if (!writer.write(line)) failWrite(writer, kind, i);
    crc.process_bytes(line.data(), line.size());
    sum.length += line.size();
  }
  const bool flushed = writer.flush();
  if (!writer.close() || !flushed) throw TERException(ERCLOSEFAILED, kind.closeFailed);
  sum.crc = crc.checksum();
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
  dataSum = writeRecords(*data, dataKind, store, count);
  infoSum = writeRecords(*info, infoKind, store, count);
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
