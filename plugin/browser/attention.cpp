#include "browser/attention.h"

#include <QStringList>
#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "support/recordText.h"
#include "support/textIndex.h"
#include "testproc/autosequenceFileStructs.h"

namespace {

// Bits of a record's reasons.
constexpr std::uint8_t noControlNum = 1;
constexpr std::uint8_t sharedControlNum = 2;
constexpr std::uint8_t unusedTestProc = 4;
constexpr std::uint8_t untitledTestProc = 8;

constexpr auto reasonTexts =
    std::to_array<std::pair<std::uint8_t, const char*>>({{noControlNum, "No control number."},
                                                         {sharedControlNum, "Another record has this control number."},
                                                         {unusedTestProc, "The test procedure is not in use."},
                                                         {untitledTestProc, "The test procedure has no title."}});

std::uint8_t titleReason(std::string_view title) {
  if (trimmedText(title).empty()) return untitledTestProc;
  return trimmedText(title) == "(UNUSED)" ? unusedTestProc : 0;
}

std::string_view controlNumOf(const TequipRec& record) {
  return trimmedText(record.text(fieldControlNum));
}

}  // namespace

const std::vector<TrecordIndex>& Tattention::records() {
  refresh();
  return found_;
}

QString Tattention::reason(TrecordIndex index) {
  refresh();
  QStringList reasons;
  for (const auto& [bit, text] : reasonTexts) {
    if ((reasons_.at(index) & bit) != 0) reasons << QString::fromLatin1(text);
  }
  return reasons.join(u' ');
}

std::size_t Tattention::withoutOwnControlNum() {
  refresh();
  const auto count = std::count_if(reasons_.begin(), reasons_.end(),
                                   [](std::uint8_t bits) { return (bits & (noControlNum | sharedControlNum)) != 0; });
  return static_cast<std::size_t>(count);
}

void Tattention::refresh() {
  if (revision_ == records_.revision()) return;
  reasons_.assign(records_.count(), 0);
  markControlNums();
  markTestProcs();
  found_.clear();
  for (TrecordIndex i = 0; i < records_.count(); ++i) {
    if (reasons_[i] != 0) found_.push_back(i);
  }
  revision_ = records_.revision();
}

void Tattention::markControlNums() {
  TtextIndex firstWith(records_.count());
  for (TrecordIndex i = 0; i < records_.count(); ++i) {
    const std::string_view controlNum = controlNumOf(records_.at(i));
    if (controlNum.empty()) {
      reasons_[i] |= noControlNum;
      continue;
    }
    const auto [first, isFirst] = firstWith.add(controlNum, i);
    if (isFirst) continue;
    reasons_[i] |= sharedControlNum;
    reasons_[first] |= sharedControlNum;
  }
}

void Tattention::markTestProcs() {
  if (titles_.count() == 0) return;
  std::vector<std::uint8_t> byNumber;
  for (unsigned number = 0; number <= maxTestProc; ++number) byNumber.push_back(titleReason(titles_.title(number)));
  for (TrecordIndex i = 0; i < records_.count(); ++i) reasons_[i] |= byNumber[records_.at(i).testProc()];
}
