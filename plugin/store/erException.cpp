#include "store/erException.h"

#include <utility>

TERException::TERException(TERStatus code, std::string message, const std::source_location& where)
    : TEqRecException(std::move(message), "Plugins/Equipment Record Plugin/datastructs",
                      static_cast<int>(where.line())),
      code_(code) {}
