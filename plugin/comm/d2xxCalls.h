#pragma once

#include <cstdint>

/// The functions of the FTDI D2XX driver library that the USB channel calls. Each returns the driver's status, 0 for
/// success. May be called from any thread, but from two at once only where a call of the other hangs.
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

  // Functions that a library may lack: the call then does nothing and succeeds.

  /// Limits each read and write, in ms.
  virtual Tstatus setTimeouts(Thandle handle, std::uint32_t read, std::uint32_t write) = 0;
  /// Drops the bytes that wait to be read (1) or written (2).
  virtual Tstatus purge(Thandle handle, std::uint32_t which) = 0;
  static constexpr std::uint32_t received = 1;
};

/// The installed driver, loaded at the first call. Without a driver every call returns `deviceNotFound`.
Td2xxCalls& systemD2xxCalls();
