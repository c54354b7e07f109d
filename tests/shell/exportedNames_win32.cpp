#include <memory>
#include <windows.h>

#include "shell/exportedNames.h"

// Reads the export table of the loaded library, which the system itself uses.
QByteArrayList exportedNames(const char* library) {
  const std::unique_ptr<HINSTANCE__, decltype(&FreeLibrary)> loaded(LoadLibraryA(library), FreeLibrary);
  if (!loaded) return {};
  const auto* base = reinterpret_cast<const char*>(loaded.get());
  const auto* start = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + start->e_lfanew);
  const auto& place = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
  const auto* table = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(base + place.VirtualAddress);
  const auto* offsets = reinterpret_cast<const DWORD*>(base + table->AddressOfNames);
  QByteArrayList names;
  for (DWORD i = 0; i < table->NumberOfNames; ++i) names << base + offsets[i];
  return names;
}
