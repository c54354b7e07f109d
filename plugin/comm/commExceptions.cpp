#include "comm/commExceptions.h"

TcommException::TcommException(const char* text, int line) : TEqRecException(text, "Communications/genComm", line) {}

TcommTimeoutException::TcommTimeoutException(int line) : TcommException("Communications timeout", line) {}

TnoDeviceAttachedException::TnoDeviceAttachedException(int line) : TcommException("No device attached", line) {}

TinitializationException::TinitializationException(int line) : TcommException("Initialization failed", line) {}

TbadInitializationException::TbadInitializationException(int line) : TcommException("Bad initialization", line) {}

TuninitializedCommModeException::TuninitializedCommModeException(int line)
    : TcommException("Uninitialized communications mode", line) {}

TinvalidCommModuleException::TinvalidCommModuleException(int line)
    : TcommException("Invalid communications module", line) {}

TinvalidDataLengthException::TinvalidDataLengthException(int line) : TcommException("Invalid data length", line) {}

ToperationCancelledException::ToperationCancelledException(int line) : TcommException("Operation cancelled", line) {}
