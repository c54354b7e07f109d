#pragma once

#include "support/messageText.h"

/// The messages of an upload. comm/commMessages.h has those of the exchange.

inline constexpr TmessageText invalidState = {"Invalid State!\nOperation Cancelled.", "Error", TmessageIcon::error};

inline constexpr TmessageText unspecifiedError = {"An unspecified error occurred.\nOperation Cancelled.", "Error",
                                                  TmessageIcon::error};

inline constexpr TmessageText internalError = {
    "An internal error occurred that prevented the download operation.\nPlease try to download again.\n\nIf this error "
    "persists, please contact the system vendor.",
    "Error", TmessageIcon::error};
