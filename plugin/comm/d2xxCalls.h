#pragma once

#include <cstdint>

/// The five functions of the FTDI D2XX driver library that the USB channel calls. Each returns the driver's status, 0
/// for success. May be called from any thread, but not from two at once.
class Td2xxCalls {
 public:
  using Thandle = void*;
  using Tstatus = std::uint32_t;
  static constexpr Tstatus deviceNotFound = 2;
  static constexpr std::uint32_t openByDescription = 2;

  virtual ~Td2xxCalls() = default;

  /// Whether there is a driver. Known after `openEx`.
  virtual bool isInstalled() const { return true; }

  virtual Tstatus openEx(const char* description, std::uint32_t flags, Thandle* handle) = 0;
  virtual Tstatus close(Thandle handle) = 0;
  virtual Tstatus read(Thandle handle, void* buffer, std::uint32_t count, std::uint32_t* done) = 0;
  virtual Tstatus write(Thandle handle, const void* buffer, std::uint32_t count, std::uint32_t* done) = 0;
  virtual Tstatus getQueueStatus(Thandle handle, std::uint32_t* waiting) = 0;
};

/// The installed driver, loaded at the first call. Without a driver every call returns `deviceNotFound`.
Td2xxCalls& systemD2xxCalls();
