#include "support/failure.h"

#include <filesystem>
#include <system_error>

#include "support/fileSystem.h"
#include "support/log.h"

std::string systemErrorText(int error) {
  return std::system_category().message(error) + " (" + std::to_string(error) + ')';
}

Tfailure loggedFailure(const char* operation, const std::filesystem::path& path, int error) {
  const std::u8string name = path.u8string();
  Tfailure failure{operation, std::string(name.begin(), name.end()), systemErrorText(error)};
  logFailure(failure.text());
  return failure;
}
