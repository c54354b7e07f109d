#include "store/erException.h"

#include <utility>

TERException::TERException(TERStatus code, std::string message, int line)
    : TEqRecException(std::move(message), "Plugins/Equipment Record Plugin/datastructs", line), code_(code) {}
