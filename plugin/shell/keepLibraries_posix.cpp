#include "shell/keepLibraries.h"

void keepLibraries() {}  // here the printing plug-in is a library of its own, stays loaded and keeps what it needs
