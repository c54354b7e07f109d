#include "store/recordLoad.h"

#include "store/datastructs.h"
#include "store/pairing.h"
#include "store/recordLines.h"
#include "store/savedPair.h"
#include "support/fileSystem.h"
#include "support/paths.h"

namespace {

/// Reads one file into its list. Returns status 0, 7 or 9, or `notOpened`.
template <typename List, typename ReadLines>
TERResult readFile(TfileSystem& files, const std::filesystem::path& path, List& list, std::size_t recordLimit,
                   ReadLines readLines, TERStatus notOpened) {
  using Tend = TreadResult::Tend;
  const TreadResult result = files.read(path, list.content, recordFileLimit);
  const Tfailure none{"open", pathText(path), "there is no such file"};
  const std::string reason = result.end == Tend::done ? std::string() : result.failure.value_or(none).text();
  if (result.end == Tend::missing || result.end == Tend::notOpened) return {notOpened, reason};
  if (result.end == Tend::tooLarge) throw TERException(EREXCEPTION, "The record file is too large", reason);
  if (result.end == Tend::readFailed) throw TERException(EREXCEPTION, "fgets() failed", reason);
  try {
    readLines(list, recordLimit);
  } catch (const TERException& exception) {
    if (exception.code() != ERDATAOVERFLOW) throw;
    return {ERDATAOVERFLOW, reason};
  }
  if (result.end == Tend::closeFailed) throw TERException(ERCLOSEFAILED, "fclose() failed", reason);
  return {list.dropped ? ERINVALIDRECORDS : ERSUCCESS, {}};
}

/// Whether a record made of the two lines holds everything in them.
bool fits(const _EQDAT& data, const _EQINFO& info) {
  if (data.controlNum != info.controlNum() || data.controlNum.size() >= textField(fieldControlNum).size) return false;
  for (std::size_t id = fieldDescription; id < textFields.size(); ++id) {
    if (info.texts[id].size() >= textFields[id].size) return false;
  }
  return true;
}

TequipRec makeRecord(const _EQDAT& data, const _EQINFO& info) {
  TequipRec record;
  record.setText(fieldControlNum, data.controlNum);
  for (int id = fieldDescription; id < fieldCount; ++id) {
    record.setText(id, info.texts[static_cast<std::size_t>(id)]);
  }
  record.setTestProc(data.testProc);
  return record;
}

/// Fills the store with a record for each pair. Returns whether each holds everything in its lines.
bool merge(const Tpairing& pairing, const TdataList& data, const TinfoList& info, TequipRecTable& store) {
  bool complete = true;
  std::vector<TequipRec> records;
  records.reserve(pairing.pairs.size());
  for (const Tpair& pair : pairing.pairs) {
    const _EQDAT& dataLine = data.entries[pair.data];
    const _EQINFO& infoLine = info.entries[pair.info];
    complete = fits(dataLine, infoLine) && complete;
    records.push_back(makeRecord(dataLine, infoLine));
  }
  store = TequipRecTable(std::move(records));
  return complete;
}

/// The status of the load: an overflow of either file counts more than a line that was left out.
TERStatus worse(TERStatus data, TERStatus info, bool pairingComplete) {
  if (data == ERDATAOVERFLOW || info == ERDATAOVERFLOW) return ERDATAOVERFLOW;
  return data != ERSUCCESS || info != ERSUCCESS || !pairingComplete ? ERINVALIDRECORDS : ERSUCCESS;
}

}  // namespace

void recoverToLoad(TsavedPair& pair) {
  if (pair.recover() != TsavedPair::Trecovery::unknown) return;
  throw TERException(EREXCEPTION, "It cannot be told whether an earlier save has to be finished");
}

TERResult loadPair(TequipRecTable& store, std::size_t recordLimit, TsavedPair& pair, TfileSystem& files,
                   TpairSums& sums) {
  TdataList data;
  TERResult dataResult = readFile(files, pair.data().current, data, recordLimit, readDataLines, ER1STFILENOTFOUND);
  if (dataResult.status == ER1STFILENOTFOUND) return dataResult;
  TinfoList info;
  TERResult infoResult = readFile(files, pair.info().current, info, recordLimit, readInfoLines, ER2NDFILENOTFOUND);
  if (infoResult.status == ER2NDFILENOTFOUND) return infoResult;

  sums = {sumOf(data.content), sumOf(info.content)};
  const Tpairing pairing = pairLists(data, info);
  const bool complete = merge(pairing, data, info, store);
  return {worse(dataResult.status, infoResult.status, pairing.complete), {}, complete};
}

TERResult TequipRecFromFile(TequipRecTable* store, std::size_t recordLimit, const std::filesystem::path& dataPath,
                            const std::filesystem::path& infoPath, TfileSystem& files) {
  if (store == nullptr || dataPath.empty() || infoPath.empty()) return {ERINVALIDINPUT, {}};
  *store = TequipRecTable();
  TsavedPair pair(files, dataPath, infoPath);
  if (const Toutcome locked = pair.lock(); !locked) return {ER1STFILENOTFOUND, locked.failure().text()};
  recoverToLoad(pair);
  TpairSums sums;
  return loadPair(*store, recordLimit, pair, files, sums);
}
