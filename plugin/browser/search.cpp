#include "browser/search.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "support/recordText.h"
#include "testproc/autosequenceFileStructs.h"

namespace {

/// A text that is sought in fields, without regard to case.
class Tneedle {
 public:
  explicit Tneedle(const std::string& text) : lower_(lowerCased(text)) {
    for (std::size_t byte = 1; byte < startsOrEnds_.size(); ++byte) {
      startsOrEnds_[byte] = lowerCaseTable[byte] == static_cast<unsigned char>(lower_.front());
    }
    startsOrEnds_[0] = true;
  }

  /// Whether the needle occurs in a zero-terminated text.
  bool occursIn(const char* text) const {
    for (;; ++text) {
      // Most of a search's time goes into this loop.
      while (!startsOrEnds_[static_cast<unsigned char>(*text)]) ++text;
      if (*text == '\0') return false;
      if (startsAt(text)) return true;
    }
  }

 private:
  bool startsAt(const char* text) const {
    return std::all_of(lower_.begin(), lower_.end(), [&text](char c) {
      return lowerCaseTable[static_cast<unsigned char>(*text++)] == static_cast<unsigned char>(c);
    });
  }

  std::string lower_;
  std::array<bool, 256> startsOrEnds_{};
};

/// One text sought in one field, or in the titles, with the records that it was found in.
struct TfieldSearch {
  static constexpr int titleField = -1;

  int field;
  Tneedle needle;
  std::vector<TrecordIndex> found = {};
};

/// The searches that the texts lead to, in the order in which their results are shown.
std::vector<TfieldSearch> searchesFor(const TsearchTexts& texts) {
  const std::array<std::pair<int, const std::string*>, 3> own = {
      {{fieldDescription, &texts.description}, {fieldManufacturer, &texts.manufacturer}, {fieldModel, &texts.model}}};
  std::vector<TfieldSearch> searches;
  for (const auto& [field, text] : own) {
    if (!text->empty()) searches.push_back({field, Tneedle(*text)});
  }
  if (texts.general.empty()) return searches;
  const Tneedle general(texts.general);
  for (const auto& [field, text] : own) {
    if (text->empty()) searches.push_back({field, general});
  }
  for (const int field : {fieldControlNum, TfieldSearch::titleField, fieldCustom1, fieldCustom2, fieldCustom3}) {
    searches.push_back({field, general});
  }
  return searches;
}

/// For each test procedure number whether its title matches.
std::vector<bool> matchingTitles(const TtestProcTable& titles, const Tneedle& needle) {
  std::vector<bool> matches;
  for (unsigned number = 0; number <= maxTestProcNumber; ++number) {
    matches.push_back(needle.occursIn(std::string(titles.title(number)).c_str()));
  }
  return matches;
}

/// Runs all searches, each record once for all of them, so that its memory is walked through once.
void run(std::vector<TfieldSearch>& searches, const TequipRecTable& records, const TtestProcTable& titles) {
  std::vector<bool> titleMatches;
  for (const TfieldSearch& search : searches) {
    if (search.field == TfieldSearch::titleField) titleMatches = matchingTitles(titles, search.needle);
  }
  for (TrecordIndex index = 0; index < records.count(); ++index) {
    const TequipRec& record = records.at(index);
    for (TfieldSearch& search : searches) {
      const bool matches = search.field == TfieldSearch::titleField ? titleMatches[record.testProc()]
                                                                    : search.needle.occursIn(record.text(search.field));
      if (matches) search.found.push_back(index);
    }
  }
}

}  // namespace

bool TsearchTexts::isEmpty() const {
  return description.empty() && manufacturer.empty() && model.empty() && general.empty();
}

std::vector<TrecordIndex> findRecords(const TequipRecTable& records, const TtestProcTable& titles,
                                      const TsearchTexts& texts) {
  std::vector<TfieldSearch> searches = searchesFor(texts);
  run(searches, records, titles);
  std::vector<TrecordIndex> united;
  std::vector<bool> taken(records.count());
  for (const TfieldSearch& search : searches) {
    for (const TrecordIndex index : search.found) {
      if (!taken[index]) united.push_back(index);
      taken[index] = true;
    }
  }
  return united;
}
