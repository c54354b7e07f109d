#pragma once

#include <cstddef>
#include <string>

#include "comm/commMessages.h"
#include "upload/uploadImage.h"

/// How far an upload had come.
struct TuploadReach {
  enum class Tstep { opening, greeting, sending };

  Tstep step = Tstep::opening;
  std::size_t acknowledged = 0;  ///< blocks
  std::size_t blocks = 0;        ///< of the whole upload
  unsigned timeOut = 0;          ///< of each answer, in ms
};

/// What happened, on what, and what the user can do about it, in whole sentences. Empty if the failure's message says
/// it all. After blocks were sent it always ends with what the analyzer may hold.
std::string adviceOn(const TcommFailure& failure, const TuploadTransport& transport, const TuploadReach& reach);

/// The analyzer's place in the words of the user: "192.168.1.20", "COM5", "USB".
std::string placeOf(const TuploadTransport& transport);
