#include "comm/portNames.h"

#include <array>
#include <cstdlib>
#include <string>

std::filesystem::path portDevice(int number) {
  if (number < 1 || number > 256) return {};
  if (const char* folder = std::getenv("QT484_PORTS")) {
    return std::filesystem::path(folder) / ("com" + std::to_string(number));
  }
  constexpr int kindSize = 100;
  constexpr std::array<const char*, 3> kinds = {"/dev/ttyS", "/dev/ttyUSB", "/dev/ttyACM"};
  const int index = number - 1;
  return kinds.at(static_cast<std::size_t>(index / kindSize)) + std::to_string(index % kindSize);
}
