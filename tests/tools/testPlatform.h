#pragma once

#include <QString>
#include <cstddef>

class TtestFolder;

/// The number of open files, sockets and the like in this process.
std::size_t openHandles();

/// The analyzer's argument for a serial link that is port 3 in this process. `folder` must outlive the link.
QString linkOfPort3(const TtestFolder& folder);
