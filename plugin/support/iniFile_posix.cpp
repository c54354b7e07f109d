#include <SimpleIni.h>
#include <algorithm>
#include <charconv>
#include <optional>
#include <string>

#include "support/fileSystem.h"
#include "support/iniFile.h"
#include "support/iniLines.h"
#include "support/safeWrite.h"

namespace {

/// The file's content; empty where there is no file, nothing where there is one that cannot be read.
std::optional<std::string> contentOf(const std::filesystem::path& path) {
  std::string content;
  if (diskFileSystem().read(path, content) == TfileSystem::TreadResult::done) return content;
  std::error_code error;
  if (std::filesystem::exists(path, error) || error) return std::nullopt;
  return std::string();
}

}  // namespace

std::string TiniFile::readString(const std::string& section, const std::string& key,
                                 const std::string& defaultValue) const {
  std::string content = contentOf(path_).value_or(std::string());
  std::replace(content.begin(), content.end(), '\0', ' ');  // the reader would take it for the end of the file
  CSimpleIniA ini;
  ini.SetMultiKey();  // else the last of several equal keys would count
  if (ini.LoadData(content) < 0) return defaultValue;
  return ini.GetValue(section.c_str(), key.c_str(), defaultValue.c_str());
}

int TiniFile::readInteger(const std::string& section, const std::string& key, int defaultValue) const {
  const std::string text = readString(section, key, std::string());
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  return whole ? value : defaultValue;
}

bool TiniFile::readFlag(const std::string& section, const std::string& key, bool defaultValue) const {
  return readInteger(section, key, defaultValue ? 1 : 0) == 1;
}

void TiniFile::write(const std::string& section, const Tentries& entries) const {
  std::optional<std::string> content = contentOf(path_);
  if (!content) return;  // what cannot be read must not be replaced
  const std::string before = *content;
  for (const auto& [key, value] : entries) *content = withIniValue(*content, section, key, value);
  if (*content != before) replaceFile(diskFileSystem(), path_, *content);
}
