#pragma once

#include <QString>
#include <cstddef>

class TtestFolder;

/// The number of open files, sockets and the like in this process.
std::size_t openHandles();

/// The bytes that this process has allocated; 0 where nobody counts them (under Windows and with sanitizers).
std::size_t memoryInUse();

/// The analyzer's argument for a serial link that is port 3 in this process. `folder` must outlive the link.
QString linkOfPort3(const TtestFolder& folder);
