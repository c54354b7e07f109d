#include <windows.h>

#include "shell/keepLibraries.h"

// Qt on Windows has its printing plug-in inside this library. Qt Core lists it as soon as the library is loaded, and
// goes on to look into its list when the library has gone.
void keepLibraries() {
  HMODULE library = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN, L"Qt6PrintSupport.dll", &library);
}
