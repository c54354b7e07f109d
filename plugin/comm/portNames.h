#pragma once

#include <filesystem>

/// The device behind "COM<number>" (1 to 256) where ports have other names than on Windows: the link `com<number>` in
/// the folder that the environment variable `QT484_PORTS` names. Without that variable COM1 to COM100 are /dev/ttyS0 to
/// ttyS99, COM101 to COM200 /dev/ttyUSB0 to ttyUSB99, COM201 to COM256 /dev/ttyACM0 to ttyACM55. Empty for other
/// numbers.
std::filesystem::path portDevice(int number);
