#include "shell/keepLibraries.h"

void keepLibraries() {}  // the printing plug-in is a library of its own here, which stays and keeps what it needs
