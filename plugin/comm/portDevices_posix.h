#pragma once

#include <filesystem>
#include <string>

/// The device of "COM<number>" (1 to 256): the link `com<number>` in the folder that the environment variable
/// `QT484_PORTS` names. Without the variable COM1 to COM100 are /dev/ttyS0 to ttyS99, COM101 to COM200 /dev/ttyUSB0 to
/// ttyUSB99, COM201 to COM256 /dev/ttyACM0 to ttyACM55. Empty for other numbers.
std::filesystem::path portDevice(int number);

/// The name of the USB device that the port belongs to. `port` is the port's folder in sysfs, such as
/// /sys/class/tty/ttyUSB0. Empty where it belongs to none.
std::string usbDeviceName(const std::filesystem::path& port);
