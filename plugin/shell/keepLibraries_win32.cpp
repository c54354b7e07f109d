#include <windows.h>

#include "shell/keepLibraries.h"

// On Windows this library contains Qt's printing plug-in. Qt Core registers it when the library is loaded, and goes on
// using the registration after the library is unloaded.
void keepLibraries() {
  HMODULE library = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN, L"Qt6PrintSupport.dll", &library);
}
