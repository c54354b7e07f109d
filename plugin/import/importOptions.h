#pragma once

#include <filesystem>
#include <string>

class TiniFile;

/// What is imported and how it is read; made anew for each import.
struct TimportOptions {
  std::filesystem::path fileName;
  char delimiter = ',';
  int startRow = 1;     ///< number of the first line that is imported, counted from 1
  bool quotes = false;  ///< every field is surrounded by double quotes
};

/// What the user chose in the options dialog, as it is remembered in section `Import`.
struct TimportChoices {
  std::string fileName;       ///< Windows-1252
  int delimiter = 0;          ///< index in the list of delimiters
  std::string userDelimiter;  ///< of the choice "Other": one character or none (Windows-1252)
  int startRow = 1;
  bool quotes = false;

  static TimportChoices load(const TiniFile& ini);
  void save(const TiniFile& ini) const;
};

/// Index of the choice "Other" in the list of delimiters.
inline constexpr int otherDelimiter = 5;

/// The character behind an index in the list of delimiters; the comma for an index that is none, and for "Other"
/// without a character.
char delimiterCharacter(int index, const std::string& userDelimiter);
