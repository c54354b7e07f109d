#pragma once

#include <optional>

#include "store/erException.h"
#include "support/messageText.h"

/// The message for the status of a load or a save; nothing for success. The texts speak of loading in both cases, which
/// is established wording.
std::optional<TmessageText> loadMessage(TERStatus status);
std::optional<TmessageText> saveMessage(TERStatus status);

/// The message for a load or a save that ended with a `TERException` of this code.
TmessageText exceptionMessage(TERStatus code);
