#pragma once

#include <QString>
#include <cstddef>

class TtestFolder;

/// The number of open files, sockets and the like in this process.
std::size_t openHandles();

/// Memory of this process, in bytes.
std::size_t memoryInUse();

/// Whether memoryInUse() means anything: the memory of a sanitizer grows by itself, and Wine does not count any.
extern const bool memoryTells;

/// Bytes allocated on the heap, where the allocator counts them.
std::size_t allocatedBytes();

/// The analyzer's argument for a serial link that is port 3 in this process. `folder` must outlive the link.
QString linkOfPort3(const TtestFolder& folder);
