#include <windows.h>

#include "upload/keepAwake.h"

struct TkeepAwake::Trequest {};

TkeepAwake::TkeepAwake() {
  SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
}

TkeepAwake::~TkeepAwake() {
  SetThreadExecutionState(ES_CONTINUOUS);
}
