#include "support/failure.h"

#include <system_error>

std::string systemErrorText(int error) {
  return std::system_category().message(error) + " (" + std::to_string(error) + ')';
}
