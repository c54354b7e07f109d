#include <dlfcn.h>

#include "support/keepModule.h"

void keepModule() noexcept {
  Dl_info module = {};
  if (dladdr(reinterpret_cast<const void*>(&keepModule), &module) == 0) return;
  dlopen(module.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
}
