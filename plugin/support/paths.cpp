#include "support/paths.h"

#include <string>
#include <system_error>

#include "support/recordText.h"

namespace {

/// The first entry of `folder` that differs from `name` only in case; empty if there is none.
std::filesystem::path otherCase(const std::filesystem::path& folder, const std::string& name) {
  std::filesystem::path found;
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    const auto candidate = entry->path().filename();
    if (sameName(pathText(candidate), name) && (found.empty() || candidate < found)) found = candidate;
  }
  return found;
}

}  // namespace

std::filesystem::path findPath(const std::filesystem::path& folder, std::string_view name) {
  std::filesystem::path path = folder;
  for (const auto& part : std::filesystem::path(name)) {
    std::error_code error;
    const auto exact = path / part;
    const auto other =
        std::filesystem::exists(exact, error) ? std::filesystem::path() : otherCase(path, pathText(part));
    path = other.empty() ? exact : path / other;
  }
  return path;
}

std::string pathText(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}
