#include <windows.h>

#include "comm/d2xxLibrary.h"

namespace {

using Tstatus = Td2xxCalls::Tstatus;

struct Tfunctions {
  Tstatus(WINAPI* openEx)(const char*, std::uint32_t, void**) = nullptr;
  Tstatus(WINAPI* close)(void*) = nullptr;
  Tstatus(WINAPI* read)(void*, void*, std::uint32_t, std::uint32_t*) = nullptr;
  Tstatus(WINAPI* write)(void*, const void*, std::uint32_t, std::uint32_t*) = nullptr;
  Tstatus(WINAPI* getQueueStatus)(void*, std::uint32_t*) = nullptr;
  Tstatus(WINAPI* setTimeouts)(void*, std::uint32_t, std::uint32_t) = nullptr;
  Tstatus(WINAPI* purge)(void*, std::uint32_t) = nullptr;
};

template <typename Tfunction>
void find(HMODULE library, const char* name, Tfunction& function) {
  function = reinterpret_cast<Tfunction>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

/// Loads the library from the system's or the program's folder only: a library of that name elsewhere is not to be
/// trusted. The functions are found by their ordinals, those that it may lack by their names. The library stays loaded.
Tfunctions findDriver() {
  Tfunctions found;
  const HMODULE library =
      LoadLibraryExA("ftd2xx.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32 | LOAD_LIBRARY_SEARCH_APPLICATION_DIR);
  if (!library) return found;
  find(library, MAKEINTRESOURCEA(27), found.openEx);
  find(library, MAKEINTRESOURCEA(2), found.close);
  find(library, MAKEINTRESOURCEA(3), found.read);
  find(library, MAKEINTRESOURCEA(4), found.write);
  find(library, MAKEINTRESOURCEA(18), found.getQueueStatus);
  find(library, "FT_SetTimeouts", found.setTimeouts);
  find(library, "FT_Purge", found.purge);
  return found;
}

}  // namespace

Td2xxCalls& systemD2xxCalls() {
  static Td2xxLibrary<Tfunctions> driver(findDriver);
  return driver;
}
