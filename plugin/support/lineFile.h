#pragma once

#include <filesystem>
#include <memory>
#include <string_view>

/// A new text file, each line of which is the system's own as soon as it is written: when the program is killed, no
/// line is lost. What cannot be written goes unnoticed. Destroying it closes the file.
class TlineFile {
 public:
  /// Opens the file, without what it held; null where it cannot be opened.
  static std::unique_ptr<TlineFile> create(const std::filesystem::path& path);
  virtual ~TlineFile() = default;

  /// `line` ends in a line feed, which becomes the platform's line end.
  virtual void write(std::string_view line) = 0;
};
