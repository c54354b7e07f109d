#pragma once

#include <functional>
#include <optional>

#include "support/messages.h"

/// What one step of the exchange ended with: nothing, or the one message that the user is to see.
using TcommOutcome = std::optional<TmessageText>;

enum class TcommStep { handshake, putData };

inline constexpr TmessageText couldNotInitialize = {"Could not initialize connection.\nOperation Canceled.", "Error",
                                                    TmessageIcon::error};
inline constexpr TmessageText couldNotCommunicate = {
    "Could not establish communications with analyzer.\nOperation Canceled.", "Error", TmessageIcon::error};

/// Runs a step and turns whatever it throws into its message.
TcommOutcome runCommStep(TcommStep step, const std::function<TcommOutcome()>& work);
