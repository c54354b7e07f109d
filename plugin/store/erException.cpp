#include "store/erException.h"

#include <utility>

TERException::TERException(TERStatus code, std::string message, std::source_location where)
    : TERException(code, std::move(message), std::string(), where) {}

TERException::TERException(TERStatus code, std::string message, std::string reason, std::source_location where)
    : TEqRecException(std::move(message), "Plugins/Equipment Record Plugin/datastructs",
                      static_cast<int>(where.line())),
      code_(code),
      reason_(std::move(reason)) {}
