#include "browser/search.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "support/recordText.h"
#include "testproc/autosequenceFileStructs.h"

namespace {

/// One text, in lower case, to search for in one text field or in the titles.
struct TcolumnSearch {
  TcolumnId column;
  std::string needle;
};

/// The searches to make, in the order in which their results are shown: first the fields with a search box of their
/// own, then all others.
std::vector<TcolumnSearch> plainSearchesFor(const TsearchTexts& texts) {
  const std::array<std::pair<TcolumnId, const std::string*>, 3> own = {
      {{fieldDescription, &texts.description}, {fieldManufacturer, &texts.manufacturer}, {fieldModel, &texts.model}}};
  std::vector<TcolumnSearch> searches;
  for (const auto& [column, text] : own) {
    if (!text->empty()) searches.push_back({column, lowerCased(*text)});
  }
  if (texts.general.empty()) return searches;
  const std::string general = lowerCased(texts.general);
  for (const auto& [column, text] : own) {
    if (text->empty()) searches.push_back({column, general});
  }
  for (const Tcolumn& column : allColumns) {
    const bool hasOwnBox = std::any_of(own.begin(), own.end(), [&](const auto& box) { return box.first == column.id; });
    const bool searched = column.id < fieldCount || column.id == columnTitle;
    if (searched && !hasOwnBox) searches.push_back({column.id, general});
  }
  return searches;
}

/// Searches for a double quote also as the typographic one.
std::vector<TcolumnSearch> searchesFor(const TsearchTexts& texts) {
  std::vector<TcolumnSearch> searches;
  for (TcolumnSearch& search : plainSearchesFor(texts)) {
    std::string stored = withoutDoubleQuotes(search.needle);
    if (stored != search.needle) searches.push_back({search.column, std::move(stored)});
    searches.push_back(std::move(search));
  }
  return searches;
}

}  // namespace

std::vector<TcolumnId> columnsFound(const TsearchTexts& texts, const TrecordView& record) {
  std::vector<TcolumnId> columns;
  for (const TcolumnSearch& search : searchesFor(texts)) {
    const bool occurs = lowerCased(columnText(search.column, record)).find(search.needle) != std::string::npos;
    if (occurs) columns.push_back(search.column);
  }
  return columns;
}

std::string inWords(const TsearchTexts& texts) {
  const std::array<std::pair<const char*, const std::string*>, 4> boxes = {{{"Description", &texts.description},
                                                                            {"Manufacturer", &texts.manufacturer},
                                                                            {"Model", &texts.model},
                                                                            {"General", &texts.general}}};
  std::string words;
  for (const auto& [name, text] : boxes) {
    if (!text->empty()) words += (words.empty() ? "" : ", ") + std::string(name) + " \"" + *text + '"';
  }
  return words;
}

bool TsearchTexts::isEmpty() const {
  return description.empty() && manufacturer.empty() && model.empty() && general.empty();
}

std::vector<TrecordIndex> TrecordSearch::find(const TsearchTexts& texts) {
  refresh();
  std::vector<TrecordIndex> united;
  std::vector<bool> taken(records_.count());
  for (const TcolumnSearch& search : searchesFor(texts)) {
    const auto found =
        search.column == columnTitle ? findTitle(search.needle) : columns_.at(search.column).find(search.needle);
    for (const TrecordIndex index : found) {
      if (!taken[index]) united.push_back(index);
      taken[index] = true;
    }
  }
  return united;
}

void TrecordSearch::TlowerTexts::append(std::string_view text) {
  starts.push_back(static_cast<std::uint32_t>(texts.size()));
  for (const char c : text) texts += static_cast<char>(lowerCaseTable[static_cast<unsigned char>(c)]);
  texts += '\0';
}

std::vector<TrecordIndex> TrecordSearch::TlowerTexts::find(const std::string& needle) const {
  std::vector<TrecordIndex> found;
  if (needle.find('\0') != std::string::npos) return found;  // no text holds a zero byte
  const std::boyer_moore_horspool_searcher searcher(needle.begin(), needle.end());
  auto next = starts.begin();
  for (auto from = texts.begin(); from != texts.end();) {
    const auto hit = std::search(from, texts.end(), searcher);
    if (hit == texts.end()) break;
    next = std::upper_bound(next, starts.end(), static_cast<std::uint32_t>(hit - texts.begin()));
    found.push_back(static_cast<TrecordIndex>(next - starts.begin() - 1));
    from = next == starts.end() ? texts.end() : texts.begin() + *next;
  }
  return found;
}

void TrecordSearch::refresh() {
  if (revision_ == records_.revision()) return;
  for (std::size_t field = 0; field < columns_.size(); ++field) {
    TlowerTexts& column = columns_[field];
    column = TlowerTexts();
    for (TrecordIndex i = 0; i < records_.count(); ++i) column.append(records_.at(i).text(static_cast<int>(field)));
  }
  revision_ = records_.revision();
}

std::vector<TrecordIndex> TrecordSearch::findTitle(const std::string& needle) const {
  std::vector<bool> matches;
  for (unsigned number = 0; number <= maxTestProcNumber; ++number) {
    matches.push_back(lowerCased(titles_.title(number)).find(needle) != std::string::npos);
  }
  std::vector<TrecordIndex> found;
  for (TrecordIndex i = 0; i < records_.count(); ++i) {
    if (matches[records_.at(i).testProc()]) found.push_back(i);
  }
  return found;
}
