#pragma once

#include <string>

#include "support/errors.h"

/// How a load or a save of the record files ended. A load returns them, a `TERException` carries them.
using TERStatus = signed char;

inline constexpr TERStatus ERSUCCESS = 0;
inline constexpr TERStatus EREXCEPTION = 1;        ///< general error
inline constexpr TERStatus ER1STFILENOTFOUND = 2;  ///< the data file could not be opened
inline constexpr TERStatus ER2NDFILENOTFOUND = 3;  ///< the information file could not be opened
inline constexpr TERStatus ERINVALIDINPUT = 4;     ///< invalid arguments
inline constexpr TERStatus ERDATAOVERFLOW = 7;     ///< more records than allowed
inline constexpr TERStatus ERCLOSEFAILED = 8;      ///< a file could not be closed
inline constexpr TERStatus ERINVALIDRECORDS = 9;   ///< one or more corrupt lines or records were left out
inline constexpr TERStatus ERSUCCESSTOO = 10;      ///< success as well
inline constexpr TERStatus ERINVALIDFIELD = 11;    ///< a field id that is none

/// The record store's exception.
class TERException : public TEqRecException {
 public:
  /// `line` is the line that raises, unless it is given.
  TERException(TERStatus code, std::string message, int line = __builtin_LINE());

  TERStatus code() const { return code_; }

 private:
  TERStatus code_;
};
