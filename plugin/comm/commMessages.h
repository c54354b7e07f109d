#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "comm/commPort.h"
#include "comm/genComm.h"
#include "support/messageText.h"

/// The messages about the connection to the analyzer.

/// What a failure means to the user.
enum class TcommCause : std::uint8_t { other, timeOut, noDevice, notOpened, lost, wrongAnswer, cancelled };

/// How a step of the exchange failed: its message, and what the message does not tell.
struct TcommFailure : TmessageText {
  TcommFailure(const TmessageText& message, TcommCause why = TcommCause::other, std::string what = {})
      : TmessageText(message), cause(why), reason(std::move(what)) {}

  TcommCause cause;
  std::string
      reason;  ///< what failed, on what, and the system's text: "open COM5: Permission denied (13)"; may be empty
  std::string advice;  ///< what the user can do; may be empty
};

/// The failure at the end of a step of the exchange; none after success.
using TcommOutcome = std::optional<TcommFailure>;

enum class TcommStep { handshake, putData };

/// The failure of the exception that is being handled.
TcommFailure failureOfCaught(TcommStep step);

/// Runs a step. Logs whatever it throws and turns it into its failure.
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
