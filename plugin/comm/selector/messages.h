#pragma once

#include "support/messages.h"

/// What the connection selector says.

inline constexpr TmessageText invalidAddress = {"Invalid IP Address!", "Error", TmessageIcon::error};
