#pragma once

#include <string>

/// What the system knows of a serial port without opening it. May be called from any thread.

/// Whether there is a port "COM<number>".
bool isPortPresent(int number);

/// What the port's device calls itself, such as "FTDI FT232R USB UART", as UTF-8; empty where the system does not know.
std::string portDeviceName(int number);
