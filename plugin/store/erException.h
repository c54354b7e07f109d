#pragma once

#include <string>
#include <utility>

#include "support/errors.h"
#include "support/sourceLocation.h"

/// How a load or a save of the record files ended. Either returns a status or throws a `TERException` with one.
using TERStatus = signed char;

inline constexpr TERStatus ERSUCCESS = 0;
inline constexpr TERStatus EREXCEPTION = 1;        ///< general error
inline constexpr TERStatus ER1STFILENOTFOUND = 2;  ///< the data file could not be opened
inline constexpr TERStatus ER2NDFILENOTFOUND = 3;  ///< the information file could not be opened
inline constexpr TERStatus ERINVALIDINPUT = 4;     ///< invalid arguments
inline constexpr TERStatus ERDATAOVERFLOW = 7;     ///< more records than allowed
inline constexpr TERStatus ERCLOSEFAILED = 8;      ///< a file could not be closed
inline constexpr TERStatus ERINVALIDRECORDS = 9;   ///< one or more corrupt lines or records were left out
inline constexpr TERStatus ERSUCCESSTOO = 10;      ///< success, too
inline constexpr TERStatus ERINVALIDFIELD = 11;    ///< not a field id

/// The record store's exception.
class TERException : public TEqRecException {
 public:
  using Tlocation = TsourceLocation;

  TERException(TERStatus code, std::string message, Tlocation where = Tlocation::current())
      : TERException(code, std::move(message), std::string(), where) {}
  /// `reason` says which operation of the system failed, and why: the text of a `Tfailure`.
  TERException(TERStatus code, std::string message, std::string reason, Tlocation where = Tlocation::current())
      : TEqRecException(std::move(message), "Plugins/Equipment Record Plugin/datastructs",
                        static_cast<int>(where.line())),
        code_(code),
        reason_(std::move(reason)) {}

  TERStatus code() const { return code_; }
  /// Empty if no operation of the system failed.
  const std::string& reason() const { return reason_; }

 private:
  TERStatus code_;
  std::string reason_;
};

/// The status that a load or a save returned.
struct TERResult {
  TERStatus status = ERSUCCESS;
  std::string reason;    ///< as that of a `TERException`
  bool complete = true;  ///< of a load: whether the records hold all that the files say
};
