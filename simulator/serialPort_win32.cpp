#include "simulator/serialPort.h"

std::unique_ptr<TserialPort> makeSerialPort(const QString& /*path*/) {
  return nullptr;
}
