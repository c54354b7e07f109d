#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

/// One INI file of settings. Every access opens the file and closes it again; nothing is kept in between.
///
/// Sections and keys are compared without regard to case, and of a key that stands twice in a section the first counts.
/// Texts are Windows-1252, as a record's are. Nothing about settings is ever an error: what cannot be read is its
/// default, and what cannot be written is not written, with the old file whole.
class TiniFile {
 public:
  using Tentries = std::vector<std::pair<std::string, std::string>>;

  explicit TiniFile(std::filesystem::path path) : path_(std::move(path)) {}

  /// The key's value without blanks around it; `defaultValue` where file, section or key is missing.
  std::string readString(const std::string& section, const std::string& key, const std::string& defaultValue) const;

  /// As `readString`; `defaultValue` also where the value is no decimal 32-bit number.
  int readInteger(const std::string& section, const std::string& key, int defaultValue) const;

  /// Flags are integers that are true only when equal to 1.
  bool readFlag(const std::string& section, const std::string& key, bool defaultValue) const;

  /// Writes keys of one section, durably, creating file and section where they are missing. Everything else in the
  /// file stays to the byte: comments, other sections, keys that stand twice, lines that mean nothing.
  void write(const std::string& section, const Tentries& entries) const;

 private:
  std::filesystem::path path_;
};
