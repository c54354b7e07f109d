#include "comm/portDevices_posix.h"

#include <array>
#include <cstdlib>
#include <fstream>
#include <system_error>

#include "comm/portDevices.h"

namespace {

namespace fs = std::filesystem;

/// The first line of a file; empty if it cannot be read.
std::string firstLine(const fs::path& file) {
  std::string line;
  std::ifstream stream(file);
  std::getline(stream, line);
  return line;
}

}  // namespace

fs::path portDevice(int number) {
  if (number < 1 || number > 256) return {};
  if (const char* folder = std::getenv("QT484_PORTS")) return fs::path(folder) / ("com" + std::to_string(number));
  constexpr int kindSize = 100;
  constexpr std::array<const char*, 3> kinds = {"/dev/ttyS", "/dev/ttyUSB", "/dev/ttyACM"};
  const int index = number - 1;
  return kinds.at(static_cast<std::size_t>(index / kindSize)) + std::to_string(index % kindSize);
}

/// The port's device is an interface of the USB device, or something below one: the device is the nearest folder above
/// with a product name.
std::string usbDeviceName(const fs::path& port) {
  std::error_code error;
  fs::path folder = fs::canonical(port / "device", error);
  for (; !error && folder.has_relative_path(); folder = folder.parent_path()) {
    const std::string product = firstLine(folder / "product");
    if (product.empty()) continue;
    std::string name = firstLine(folder / "manufacturer");
    if (!name.empty()) name += ' ';
    return product.starts_with(name) ? product : name.append(product);
  }
  return {};
}

bool isPortPresent(int number) {
  std::error_code error;
  return fs::exists(portDevice(number), error);
}

std::string portDeviceName(int number) {
  std::error_code error;
  const fs::path device = fs::canonical(portDevice(number), error);
  return error ? std::string() : usbDeviceName(fs::path("/sys/class/tty") / device.filename());
}
