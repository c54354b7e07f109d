#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <istream>
#include <optional>
#include <vector>

#include "import/decodedFile.h"
#include "import/importOptions.h"
#include "import/lineReader.h"
#include "import/spreadsheetReader.h"
#include "import/tokeniser.h"

/// A character that Windows-1252 lacks, in the field of this column.
struct TreplacedCharacter {
  std::size_t column = 0;
  char32_t character = 0;
};

/// A row of the file to import: a line or, in a file as spreadsheets write it, what belongs together by its quotes.
struct TimportRow {
  TfieldList fields = TfieldList(1);  ///< Windows-1252; valid until the next row is read
  std::vector<TreplacedCharacter> replaced;
  bool isCut = false;          ///< it was longer than a row may be, and its end is missing
  bool isQuoteOpen = false;    ///< a quote was not closed; its field ends with the line
  bool hasOtherBreak = false;  ///< a line end of another kind stands within the row
};

/// Reads the rows of a file, for the preview and for the import: lines that `tokenise` splits, or rows as spreadsheets
/// write them. How much memory it takes does not depend on the size of the file.
class TrowReader {
 public:
  /// The stream must outlive the reader, stand at its start, and be able to seek. `goOn`, if given, is called before
  /// each read of the stream and stops the reading when it returns false.
  TrowReader(std::istream& file, const TimportOptions& options, std::function<bool()> goOn = {});
  TrowReader(const TrowReader&) = delete;
  TrowReader& operator=(const TrowReader&) = delete;

  /// Reads the next row into `row`, whose memory is used again. False at the end, and after a stop or a failure.
  bool next(TimportRow& row);

  /// The number of the row that was read last, counted from 1.
  std::size_t number() const { return number_; }
  /// Whether the file could not be read to its end.
  bool failed() const { return text_.bad(); }
  /// About how many bytes of the file have been used.
  std::uint64_t position() const { return decoded_.sourcePosition(textPosition()); }

 private:
  bool nextLine(TimportRow& row);
  bool isLineCut(std::string_view line) const;
  bool goOn();
  std::uint64_t textPosition() const { return rows_ ? rows_->position() : lines_->position(); }
  void takeReplaced(TimportRow& row, const std::vector<std::uint64_t>& starts, std::uint64_t end);

  TdecodedFile decoded_;
  std::istream text_;  ///< the decoded file
  char delimiter_;
  bool quotes_;
  std::function<bool()> goOn_;
  std::optional<TlineReader> lines_;
  std::optional<TspreadsheetReader> rows_;  ///< instead of the lines
  std::uint64_t lineStart_ = 0;             ///< the line's offset in the text
  std::vector<std::uint64_t> starts_;       ///< of the line's fields
  std::size_t number_ = 0;
};
