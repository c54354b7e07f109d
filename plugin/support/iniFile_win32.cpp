#include <optional>
#include <system_error>
#include <windows.h>

#include "support/fileSystem.h"
#include "support/iniFile.h"

// The system's own calls for settings. They take the file's bytes for text in the system's code page. Texts are
// therefore converted as if they were in that code page, and the bytes in the file are those of the caller.

namespace {

/// `bytes` as the calls expect them; nothing if the code page cannot restore them.
std::optional<std::wstring> widened(const std::string& bytes) {
  if (bytes.empty()) return std::wstring();
  const int size = static_cast<int>(bytes.size());
  std::wstring text(bytes.size(), L'\0');
  const int length = MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, bytes.data(), size, text.data(), size);
  if (length == 0) return std::nullopt;
  text.resize(length);
  return text;
}

std::string narrowed(const std::wstring& text) {
  const int wide = static_cast<int>(text.size());
  std::string bytes(4 * text.size(), '\0');
  const int length =
      WideCharToMultiByte(CP_ACP, 0, text.data(), wide, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
  bytes.resize(length);
  return bytes;
}

std::string withoutBlanks(const std::string& text) {
  const std::size_t first = text.find_first_not_of(" \t");
  return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// A value in quotes of its own if it has a pair already, of which the calls remove one.
std::string quoted(const std::string& value) {
  const bool hasPair =
      value.size() > 1 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
  return hasPair ? '"' + value + '"' : value;
}

/// The calls look for a path without a folder in the system's own folder.
std::filesystem::path fullPath(const std::filesystem::path& path) {
  std::error_code error;
  auto full = std::filesystem::absolute(path, error);
  return error ? path : full;
}

bool putEntry(const std::string& section, const std::string& key, const std::string& value,
              const std::filesystem::path& path) {
  const auto wideSection = widened(section);
  const auto wideKey = widened(key);
  const auto wideValue = widened(quoted(value));
  return wideSection && wideKey && wideValue &&
         WritePrivateProfileStringW(wideSection->c_str(), wideKey->c_str(), wideValue->c_str(), path.c_str()) != 0 &&
         TiniFile(path).readString(section, key, value + '?') == withoutBlanks(value);
}

bool putAll(const std::string& section, const TiniFile::Tentries& entries, const std::filesystem::path& path) {
  for (const auto& [key, value] : entries) {
    if (!putEntry(section, key, value, path)) return false;
  }
  WritePrivateProfileStringW(nullptr, nullptr, nullptr, path.c_str());  // flushes the system's cache
  return true;
}

}  // namespace

std::string TiniFile::readString(const std::string& section, const std::string& key,
                                 const std::string& defaultValue) const {
  constexpr const wchar_t* none = L"\x01";
  const auto wideSection = widened(section);
  const auto wideKey = widened(key);
  if (!wideSection || !wideKey) return defaultValue;
  std::wstring text(32768, L'\0');
  text.resize(GetPrivateProfileStringW(wideSection->c_str(), wideKey->c_str(), none, text.data(),
                                       static_cast<DWORD>(text.size()), fullPath(path_).c_str()));
  return text == none ? defaultValue : withoutBlanks(narrowed(text));
}

/// Edits a copy, which then replaces the file: the calls themselves change a file in place, key by key.
void TiniFile::putEntries(const std::string& section, const Tentries& entries) const {
  TfileSystem& files = diskFileSystem();
  const auto path = files.resolve(fullPath(path_));
  std::string before;
  const TreadResult::Tend read = files.read(path, before).end;
  if (read != TreadResult::Tend::done && read != TreadResult::Tend::missing) return;
  const auto copy = ownNameBeside(path);
  std::string after;
  const bool changed = writeFlushed(files, copy, path, before) && putAll(section, entries, copy) &&
                       files.read(copy, after).end == TreadResult::Tend::done && after != before;
  files.remove(copy);
  if (changed) replaceFile(files, path, after);
}
