#pragma once

#include <QString>
#include <cstddef>

class TtestFolder;

/// Files, sockets and the like that this process holds open.
std::size_t openHandles();

/// Bytes of memory that this process has to itself.
std::size_t memoryInUse();

/// Whether that tells something: sanitizers' own memory grows, and Wine counts none.
extern const bool memoryTells;

/// Bytes that are allocated of the heap, where the allocator counts them.
std::size_t allocatedBytes();

/// What the analyzer is to be told of its serial link, so that it becomes port 3 of this process. `folder` must live
/// as long as the link.
QString linkOfPort3(const TtestFolder& folder);
