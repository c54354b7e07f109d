#include <optional>
#include <string>

#include "support/fileSystem.h"
#include "support/iniFile.h"
#include "support/iniLines.h"

namespace {

/// The file's content: empty if there is no file, nothing if it cannot be read.
std::optional<std::string> contentOf(const std::filesystem::path& path) {
  std::string content;
  const TreadResult::Tend end = diskFileSystem().read(path, content).end;
  if (end == TreadResult::Tend::missing) return std::string();
  return end == TreadResult::Tend::done ? std::optional(content) : std::nullopt;
}

}  // namespace

std::string TiniFile::readString(const std::string& section, const std::string& key,
                                 const std::string& defaultValue) const {
  const std::string content = contentOf(path_).value_or(std::string());
  return std::string(iniValue(content, section, key).value_or(defaultValue));
}

void TiniFile::putEntries(const std::string& section, const Tentries& entries) const {
  std::optional<std::string> content = contentOf(path_);
  if (!content) return;  // what cannot be read must not be replaced
  const std::string before = *content;
  for (const auto& [key, value] : entries) *content = withIniValue(*content, section, key, value);
  if (*content != before) replaceFile(diskFileSystem(), path_, *content);
}
