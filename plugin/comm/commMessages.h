#pragma once

#include <functional>
#include <optional>

#include "comm/commPort.h"
#include "comm/genComm.h"
#include "support/messageText.h"

/// The messages about the connection to the analyzer.

/// The message for the user at the end of a step of the exchange; none after success.
using TcommOutcome = std::optional<TmessageText>;

enum class TcommStep { handshake, putData };

/// Runs a step. Logs whatever it throws and turns it into its message.
TcommOutcome runCommStep(TcommStep step, const std::function<TcommOutcome()>& work);

inline constexpr TmessageText couldNotInitialize = {"Could not initialize connection.\nOperation Canceled.", "Error",
                                                    TmessageIcon::error};
inline constexpr TmessageText couldNotCommunicate = {
    "Could not establish communications with analyzer.\nOperation Canceled.", "Error", TmessageIcon::error};

// The message boxes of a channel that is not silent.

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

// The connection selector.

inline constexpr TmessageText invalidAddress = {"Invalid IP Address!", "Error", TmessageIcon::error};
