#include "support/paths.h"

#include <string>
#include <system_error>

#include "support/recordText.h"
#include "support/uninterrupted.h"

namespace {

using Tpath = std::filesystem::path;

/// Whether something has that name. Counts what cannot be looked up as there.
bool mayExist(const Tpath& path) {
  std::error_code error;
  const bool exists = uninterrupted(error, [&](std::error_code& e) { return std::filesystem::exists(path, e); });
  return exists || error;
}

/// The first entry of `folder` that differs from `name` only in case; empty if there is none.
Tpath otherCase(const Tpath& folder, const std::string& name) {
  Tpath found;
  std::vector<Tpath> names;
  // Tried again, because the caller takes a failure for a name that does not exist.
  if (namesInFolder(folder, names)) namesInFolder(folder, names);
  for (const Tpath& candidate : names) {
    if (sameName(pathText(candidate), name) && (found.empty() || candidate < found)) found = candidate;
  }
  return found;
}

}  // namespace

Tpath findPath(const Tpath& folder, std::string_view name) {
  Tpath path = folder;
  for (const Tpath& part : Tpath(name)) {
    const Tpath exact = path / part;
    const Tpath other = mayExist(exact) ? Tpath() : otherCase(path, pathText(part));
    path = other.empty() ? exact : path / other;
  }
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
