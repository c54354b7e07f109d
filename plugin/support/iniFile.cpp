#include "support/iniFile.h"

#include <algorithm>
#include <charconv>

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
  const auto endsLine = [](char c) { return c == '\n' || c == '\r' || c == '\0'; };
  Tentries clean = entries;
  for (auto& [key, value] : clean) std::replace_if(value.begin(), value.end(), endsLine, ' ');
  putEntries(section, clean);
}
