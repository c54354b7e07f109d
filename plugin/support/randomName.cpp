#include "support/randomName.h"

#include <random>

namespace {

constexpr std::string_view digits = "0123456789abcdef";

}  // namespace

std::string randomName() {
  std::random_device random;
  std::uniform_int_distribution<std::size_t> digit(0, digits.size() - 1);
  std::string name;
  while (name.size() < randomNameLength) name += digits[digit(random)];
  return name;
}

bool isRandomName(std::string_view text) {
  return text.size() == randomNameLength && text.find_first_not_of(digits) == std::string_view::npos;
}
