#pragma once

#include <optional>

#include "store/erException.h"
#include "support/messages.h"

/// The message that a load, or a save, shows for the status that it ended with; nothing for success. The texts speak of
/// loading in both cases: established wording.
std::optional<TmessageText> loadMessage(TERStatus status);
std::optional<TmessageText> saveMessage(TERStatus status);

/// The message for a `TERException` with this code that ended a load or a save.
TmessageText exceptionMessage(TERStatus code);
