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
};

template <typename Tfunction>
void find(HMODULE library, int ordinal, Tfunction& function) {
  function = reinterpret_cast<Tfunction>(reinterpret_cast<void*>(GetProcAddress(library, MAKEINTRESOURCEA(ordinal))));
}

/// Loads the library from the system's or the program's folder only: a library of that name elsewhere is not to be
/// trusted. The functions are found by their ordinals. The library stays loaded.
Tfunctions findDriver() {
  Tfunctions found;
  const HMODULE library =
      LoadLibraryExA("ftd2xx.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32 | LOAD_LIBRARY_SEARCH_APPLICATION_DIR);
  if (!library) return found;
  find(library, 27, found.openEx);
  find(library, 2, found.close);
  find(library, 3, found.read);
  find(library, 4, found.write);
  find(library, 18, found.getQueueStatus);
  return found;
}

}  // namespace

Td2xxCalls& systemD2xxCalls() {
  static Td2xxLibrary<Tfunctions> driver(findDriver);
  return driver;
}
