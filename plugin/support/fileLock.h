#pragma once

#include <chrono>
#include <filesystem>
#include <thread>

#include "support/fileSystem.h"

/// Tries once to lock a file, as `TfileSystem::lock` does.
TlockResult tryFileLock(const std::filesystem::path& path, bool create, const std::filesystem::path& like);

/// Tries until the file is locked or `wait` is over. The systems' own waiting calls know no time limit.
inline TlockResult waitForFileLock(const std::filesystem::path& path, bool create, const std::filesystem::path& like,
                                   std::chrono::milliseconds wait) {
  constexpr std::chrono::milliseconds pause(10);
  const auto end = std::chrono::steady_clock::now() + wait;
  TlockResult result = tryFileLock(path, create, like);
  while (result.end == TlockResult::Tend::busy && std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(pause);
    result = tryFileLock(path, create, like);
  }
  return result;
}
