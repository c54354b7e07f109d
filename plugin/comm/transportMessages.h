#pragma once

#include "comm/commPort.h"
#include "comm/genComm.h"

/// What a channel that is not silent says of its transport.

inline constexpr TmessageText noUsbHandle = {"A USB handle could not be found.\nOperation Canceled.", "Error",
                                             TmessageIcon::error};
inline constexpr TmessageText noUsbDevice = {"Device Not Detected.\nPlease check connection.\n\nOperation Canceled.",
                                             "Error", TmessageIcon::error};
inline constexpr TmessageText noSerialSlot = {"An Serial connection could not be found.\nOperation Canceled.", "Error",
                                              TmessageIcon::error};
inline constexpr TmessageText serialOpenFailed = {
    "An unspecified serial port communications error occurred.\rOperation Canceled.", "Unspecified Serial Port Error",
    TmessageIcon::error};
inline constexpr TmessageText noEthernetSlot = {"An Ethernet connection could not be found.\nOperation Canceled.",
                                                "Error", TmessageIcon::error};

TmessageText serialErrorMessage(ECommError::Tcode code);
TmessageText socketErrorMessage(TsocketError error);
