#include "support/paths.h"

#include <string>
#include <system_error>

#include "support/recordText.h"
#include "support/uninterrupted.h"

namespace {

using Tpath = std::filesystem::path;

bool isThere(const Tpath& path) {
  std::error_code error;
  return uninterrupted(error, [&](std::error_code& e) { return std::filesystem::exists(path, e); });
}

/// The entry of `folder` with that name, or else the first that differs only in case; `name` itself if there is none.
Tpath entryOf(const Tpath& folder, const Tpath& name) {
  Tpath found;
  std::vector<Tpath> names;
  // Tried again, because the caller takes a failure for a name that does not exist.
  if (namesInFolder(folder, names)) namesInFolder(folder, names);
  for (const Tpath& candidate : names) {
    if (candidate == name) return name;
    if (sameName(pathText(candidate), pathText(name)) && (found.empty() || candidate < found)) found = candidate;
  }
  return found.empty() ? name : found;
}

}  // namespace

Tpath findPath(const Tpath& folder, std::string_view name) {
  Tpath path = folder;
  for (const Tpath& part : Tpath(name)) path /= isThere(path / part) ? part : entryOf(path, part);
  return path;
}

std::error_code namesInFolder(const Tpath& folder, std::vector<Tpath>& names) {
  std::error_code error;
  names = uninterrupted(error, [&](std::error_code& e) {
    std::vector<Tpath> found;
    std::filesystem::directory_iterator entry(folder, e);
    for (const std::filesystem::directory_iterator end; !e && entry != end; entry.increment(e)) {
      found.push_back(entry->path().filename());
    }
    return e ? std::vector<Tpath>() : found;
  });
  return error;
}

std::string pathText(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}
