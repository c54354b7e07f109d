#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "store/datastructs.h"

/// One line of the data file. The text is part of the file's content and lives as long as that.
struct _EQDAT {  // NOLINT(clang-diagnostic-reserved-identifier): the established name
  std::string_view controlNum;
  std::uint32_t testProc = 0;
};

/// One line of the information file: all text fields by field id. The texts are part of the file's content and live as
/// long as that.
struct _EQINFO {  // NOLINT(clang-diagnostic-reserved-identifier): the established name
  std::array<std::string_view, fieldCount> texts;

  std::string_view controlNum() const { return texts[fieldControlNum]; }
};

/// What was read from one of the two record files.
template <typename Entry>
struct TlineList {
  std::string content;                   ///< the whole file; the entries point into it, so a list stays where it is
  std::vector<Entry> entries;            ///< the lines accepted, in file order
  std::vector<std::uint32_t> fileLines;  ///< for each entry its line, from 0, counting lines that are not blank
  std::uint32_t lineCount = 0;           ///< lines that are not blank, dropped ones included
  bool dropped = false;                  ///< whether any of them was dropped

  TlineList() = default;
  TlineList(const TlineList&) = delete;
  TlineList& operator=(const TlineList&) = delete;
};

using TdataList = TlineList<_EQDAT>;
using TinfoList = TlineList<_EQINFO>;

/// Parses the lines of `list.content` into the list's other members. Lines that are blank are passed over, lines that
/// do not parse are dropped, and a line longer than 4095 characters counts as several pieces of one line. Accepts up to
/// `recordLimit` + 1 entries; for a further line it throws `TERException` with code 7, and the list holds what was read
/// until then.
void readDataLines(TdataList& list, std::size_t recordLimit);
void readInfoLines(TinfoList& list, std::size_t recordLimit);
