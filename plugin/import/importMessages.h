#pragma once

#include "support/messageText.h"

// The messages of an import.

inline constexpr TmessageText importCanceled = {"Import not finished. Operation canceled.", "Import Canceled",
                                                TmessageIcon::information};

inline constexpr TmessageText recordsExceeded = {
    "More than 18432 equipment records were found.\nOnly the first 18432 records were imported.",
    "Equipment records exceeded", TmessageIcon::warning};

inline constexpr TmessageText recordsMalformed = {
    "Some data did not have the correct number of fields\nas specified. Some equipment record data may be malformed.",
    "Malformed Equipment Records", TmessageIcon::warning};

inline constexpr TmessageText deviceIdsTruncated = {
    "One or more Device IDs were truncated\nbecause they exceeded 17 characters in length.", "Device IDs Truncated",
    TmessageIcon::warning};

inline constexpr TmessageText importNotRead = {"Could not read import file.", "Error", TmessageIcon::error};

inline constexpr TmessageText reportNotSaved = {"The import report could not be saved.", "Error", TmessageIcon::error};
