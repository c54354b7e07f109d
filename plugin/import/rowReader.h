#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <istream>
#include <vector>

#include "import/importOptions.h"
#include "import/lineReader.h"
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

/// Reads the rows of a file, for the preview and for the import.
class TrowReader {
 public:
  /// The stream must outlive the reader, and be able to seek. `goOn`, if given, is called before each read of the
  /// stream and stops the reading when it returns false.
  TrowReader(std::istream& file, const TimportOptions& options, std::function<bool()> goOn = {});

  /// Reads the next row into `row`, whose memory is used again. False at the end, and after a stop or a failure.
  bool next(TimportRow& row);

  /// The number of the row that was read last, counted from 1.
  std::size_t number() const { return number_; }
  /// Whether the file could not be read to its end.
  bool failed() const { return lines_.failed(); }
  /// About how many bytes of the file have been used.
  std::uint64_t position() const { return lines_.position(); }

 private:
  TlineReader lines_;
  char delimiter_;
  bool quotes_;
  std::size_t number_ = 0;
};
