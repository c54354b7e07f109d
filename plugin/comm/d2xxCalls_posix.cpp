#include <dlfcn.h>

#include "comm/d2xxLibrary.h"

namespace {

using Tstatus = Td2xxCalls::Tstatus;

struct Tfunctions {
  Tstatus (*openEx)(const char*, std::uint32_t, void**) = nullptr;
  Tstatus (*close)(void*) = nullptr;
  Tstatus (*read)(void*, void*, std::uint32_t, std::uint32_t*) = nullptr;
  Tstatus (*write)(void*, const void*, std::uint32_t, std::uint32_t*) = nullptr;
  Tstatus (*getQueueStatus)(void*, std::uint32_t*) = nullptr;
  Tstatus (*setTimeouts)(void*, std::uint32_t, std::uint32_t) = nullptr;
  Tstatus (*purge)(void*, std::uint32_t) = nullptr;
};

template <typename Tfunction>
void find(void* library, const char* name, Tfunction& function) {
  function = reinterpret_cast<Tfunction>(dlsym(library, name));
}

/// Loads the library from wherever the system looks for libraries. It stays loaded.
Tfunctions findDriver() {
  Tfunctions found;
  void* library = dlopen("libftd2xx.so", RTLD_NOW | RTLD_LOCAL);
  if (!library) return found;
  find(library, "FT_OpenEx", found.openEx);
  find(library, "FT_Close", found.close);
  find(library, "FT_Read", found.read);
  find(library, "FT_Write", found.write);
  find(library, "FT_GetQueueStatus", found.getQueueStatus);
  find(library, "FT_SetTimeouts", found.setTimeouts);
  find(library, "FT_Purge", found.purge);
  return found;
}

}  // namespace

Td2xxCalls& systemD2xxCalls() {
  static Td2xxLibrary<Tfunctions> driver(findDriver);
  return driver;
}
