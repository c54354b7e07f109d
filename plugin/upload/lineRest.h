#pragma once

#include <chrono>
#include <string>

/// Remembers where an upload was broken off, for as long as the process lives. May be called from any thread.

/// Notes that an upload to this target has just been broken off.
void noteBrokenOff(const std::string& target);

/// How much longer the line to this target must be at rest, if `rest` is the whole time. Zero or less: it may be used.
std::chrono::milliseconds restLeft(const std::string& target, std::chrono::milliseconds rest);

/// Forgets all of them, for tests.
void forgetBrokenOff();
