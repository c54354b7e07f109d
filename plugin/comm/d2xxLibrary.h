#pragma once

#include "comm/d2xxCalls.h"

/// Calls the functions of the driver library. `Tfunctions` holds pointers to them, in the platform's calling
/// convention; a call of a null one returns `deviceNotFound`, except for those that a library may lack. If the library
/// is missing, each open looks for it again, as the user may have installed it meanwhile.
template <typename Tfunctions>
class Td2xxLibrary final : public Td2xxCalls {
 public:
  using Tfinder = Tfunctions (*)();

  explicit Td2xxLibrary(Tfinder find) : find_(find) {}

  bool isInstalled() const override { return functions_.openEx != nullptr; }
  Tstatus openEx(const char* description, std::uint32_t flags, Thandle* handle) override {
    if (!functions_.openEx) functions_ = find_();
    return call(functions_.openEx, description, flags, handle);
  }
  Tstatus close(Thandle handle) override { return call(functions_.close, handle); }
  Tstatus read(Thandle handle, void* buffer, std::uint32_t count, std::uint32_t* done) override {
    return call(functions_.read, handle, buffer, count, done);
  }
  Tstatus write(Thandle handle, const void* buffer, std::uint32_t count, std::uint32_t* done) override {
    return call(functions_.write, handle, buffer, count, done);
  }
  Tstatus getQueueStatus(Thandle handle, std::uint32_t* waiting) override {
    return call(functions_.getQueueStatus, handle, waiting);
  }
  Tstatus setTimeouts(Thandle handle, std::uint32_t read, std::uint32_t write) override {
    return functions_.setTimeouts ? functions_.setTimeouts(handle, read, write) : 0;
  }
  Tstatus purge(Thandle handle, std::uint32_t which) override {
    return functions_.purge ? functions_.purge(handle, which) : 0;
  }

 private:
  template <typename Tfunction, typename... Targuments>
  Tstatus call(Tfunction function, Targuments... arguments) {
    return function ? function(arguments...) : deviceNotFound;
  }

  Tfinder find_;
  Tfunctions functions_;
};
