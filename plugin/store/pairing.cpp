#include "store/pairing.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace {

using Tposition = std::uint32_t;
using Tpartners = std::vector<std::optional<Tposition>>;

/// For each line of a file the position of its entry; nothing for a dropped line.
template <typename Entry>
Tpartners entriesByLine(const TlineList<Entry>& list) {
  Tpartners entries(list.lineCount);
  for (Tposition i = 0; i < list.entries.size(); ++i) entries[list.fileLines[i]] = i;
  return entries;
}

/// Finds partners for the entries of two lists that are not whole, step by step.
class TpairFinder {
 public:
  TpairFinder(const TdataList& data, const TinfoList& info)
      : data_(data),
        info_(info),
        dataByLine_(entriesByLine(data)),
        infoByLine_(entriesByLine(info)),
        partnerOfData_(data.entries.size()),
        infoTaken_(info.entries.size(), false),
        dataStranger_(data.entries.size(), false),
        infoStranger_(info.entries.size(), false) {}

  Tpairing find() {
    const bool sameLineCount = data_.lineCount == info_.lineCount;
    pairAlongStart(sameLineCount);
    if (!sameLineCount) pairAlongEnd();
    if (sameLineCount && data_.dropped && info_.dropped) findStrangers();
    pairByControlNum();
    if (sameLineCount) pairLeftOnSameLine();
    return result();
  }

 private:
  enum class Tline { paired, unknown, different };

  /// Looks at one line of each file, and pairs them where they agree.
  Tline pairLines(std::size_t dataLine, std::size_t infoLine) {
    const auto data = dataByLine_[dataLine];
    const auto info = infoByLine_[infoLine];
    if (!data || !info || partnerOfData_[*data] || infoTaken_[*info]) return Tline::unknown;
    if (data_.entries[*data].controlNum != info_.entries[*info].controlNum()) return Tline::different;
    take(*data, *info);
    return Tline::paired;
  }

  void pairAlongStart(bool goOnAfterDifference) {
    const std::size_t shorter = std::min(dataByLine_.size(), infoByLine_.size());
    for (std::size_t line = 0; line < shorter; ++line) {
      if (pairLines(line, line) == Tline::different && !goOnAfterDifference) return;
    }
  }

  void pairAlongEnd() {
    const std::size_t shorter = std::min(dataByLine_.size(), infoByLine_.size());
    for (std::size_t back = 1; back <= shorter; ++back) {
      if (pairLines(dataByLine_.size() - back, infoByLine_.size() - back) == Tline::different) return;
    }
  }

  /// Finds the entries that must not be paired by control number: their own partner was dropped, and their control
  /// number is not there once in each file.
  void findStrangers() {
    std::unordered_map<std::string_view, std::pair<int, int>> counts;
    for (const _EQDAT& entry : data_.entries) ++counts[entry.controlNum].first;
    for (const _EQINFO& entry : info_.entries) ++counts[entry.controlNum()].second;
    const auto isStranger = [&](std::string_view controlNum, bool partnerDropped) {
      return partnerDropped && counts[controlNum] != std::pair(1, 1);
    };
    for (Tposition i = 0; i < data_.entries.size(); ++i) {
      dataStranger_[i] = isStranger(data_.entries[i].controlNum, !infoByLine_[data_.fileLines[i]]);
    }
    for (Tposition i = 0; i < info_.entries.size(); ++i) {
      infoStranger_[i] = isStranger(info_.entries[i].controlNum(), !dataByLine_[info_.fileLines[i]]);
    }
  }

  void pairByControlNum() {
    // Last entries first, so that each control number's earliest entry is at the end of its list.
    std::unordered_map<std::string_view, std::vector<Tposition>> waiting;
    for (auto i = static_cast<Tposition>(info_.entries.size()); i-- > 0;) {
      if (!infoTaken_[i] && !infoStranger_[i]) waiting[info_.entries[i].controlNum()].push_back(i);
    }
    for (Tposition i = 0; i < data_.entries.size(); ++i) {
      if (partnerOfData_[i] || dataStranger_[i]) continue;
      const auto found = waiting.find(data_.entries[i].controlNum);
      if (found == waiting.end() || found->second.empty()) continue;
      take(i, found->second.back());
      found->second.pop_back();
    }
  }

  void pairLeftOnSameLine() {
    for (std::size_t line = 0; line < dataByLine_.size(); ++line) {
      const auto data = dataByLine_[line];
      const auto info = infoByLine_[line];
      if (data && info && !partnerOfData_[*data] && !infoTaken_[*info]) take(*data, *info);
    }
  }

  void take(Tposition data, Tposition info) {
    partnerOfData_[data] = info;
    infoTaken_[info] = true;
  }

  Tpairing result() const {
    Tpairing pairing;
    for (Tposition i = 0; i < partnerOfData_.size(); ++i) {
      if (partnerOfData_[i]) pairing.pairs.push_back({i, *partnerOfData_[i]});
    }
    pairing.complete = pairing.pairs.size() == std::max(partnerOfData_.size(), infoTaken_.size());
    return pairing;
  }

  const TdataList& data_;
  const TinfoList& info_;
  const Tpartners dataByLine_;
  const Tpartners infoByLine_;
  Tpartners partnerOfData_;
  std::vector<bool> infoTaken_;
  std::vector<bool> dataStranger_;
  std::vector<bool> infoStranger_;
};

Tpairing pairByPosition(Tposition count) {
  Tpairing pairing;
  pairing.pairs.reserve(count);
  for (Tposition i = 0; i < count; ++i) pairing.pairs.push_back({i, i});
  return pairing;
}

}  // namespace

Tpairing pairLists(const TdataList& data, const TinfoList& info) {
  const bool whole = !data.dropped && !info.dropped && data.entries.size() == info.entries.size();
  if (whole) return pairByPosition(static_cast<Tposition>(data.entries.size()));
  return TpairFinder(data, info).find();
}
