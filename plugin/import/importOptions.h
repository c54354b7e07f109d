#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "import/charset.h"

class TiniFile;

/// What an import does with a Device ID that is in use: the choices of the dialog, by their index.
enum class TknownChoice : std::uint8_t { ask, skip, update };

/// Which file one import reads, and how.
struct TimportOptions {
  std::filesystem::path fileName;
  char delimiter = ',';
  int startRow = 1;     ///< the first line to import, counted from 1
  bool quotes = false;  ///< whether every field is surrounded by double quotes
  /// Whether quotes are read as spreadsheets write them (RFC 4180). `quotes` does not count then.
  bool spreadsheet = false;
  Tcharset charset = Tcharset::automatic;
  TknownChoice known = TknownChoice::ask;
};

/// The user's choices in the options dialog: section `Import` of the settings.
struct TimportChoices {
  std::string fileName;       ///< Windows-1252
  int delimiter = 0;          ///< index in the list of delimiters
  std::string userDelimiter;  ///< for the choice "Other": one character or none (Windows-1252)
  int startRow = 1;
  bool quotes = false;
  bool spreadsheet = false;
  int charset = 0;  ///< index in the list of character sets

  static TimportChoices load(const TiniFile& ini);
  void save(const TiniFile& ini) const;
};

TknownChoice loadKnownChoice(const TiniFile& ini);
void saveKnownChoice(const TiniFile& ini, TknownChoice choice);

/// Index of the choice "Other" in the list of delimiters.
inline constexpr int otherDelimiter = 5;

/// The character for an index in the list of delimiters. The comma for any other index, and for "Other" without a
/// character.
char delimiterCharacter(int index, const std::string& userDelimiter);

/// The character set for an index in its list; automatic for any other index.
Tcharset charsetOf(int index);
