#include "host/console.h"

void leaveOwnConsole() {}
