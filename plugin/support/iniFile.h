#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

/// One INI file of settings. Every access opens the file and closes it again; nothing is cached.
///
/// Sections and keys are compared without regard to case. If a section holds a key twice, the first counts. Texts are
/// Windows-1252, as in a record. Settings never raise an error: what cannot be read has its default, and a write that
/// fails leaves the old file whole.
class TiniFile {
 public:
  using Tentries = std::vector<std::pair<std::string, std::string>>;

  explicit TiniFile(std::filesystem::path path) : path_(std::move(path)) {}

  /// The key's value without blanks around it; `defaultValue` if the file, the section or the key is missing.
  std::string readString(const std::string& section, const std::string& key, const std::string& defaultValue) const;

  /// As `readString`; `defaultValue` also if the value is no decimal 32-bit number.
  int readInteger(const std::string& section, const std::string& key, int defaultValue) const;

  /// Flags are integers that are true only when equal to 1.
  bool readFlag(const std::string& section, const std::string& key, bool defaultValue) const;

  /// Writes keys of one section durably, and creates file and section if they are missing. Every other byte of the file
  /// stays: comments, other sections, second lines of a key, lines without meaning. A line break or a zero byte in a
  /// value becomes a blank, so that a value cannot add lines of its own.
  void write(const std::string& section, const Tentries& entries) const;

 private:
  void putEntries(const std::string& section, const Tentries& entries) const;

  std::filesystem::path path_;
};
