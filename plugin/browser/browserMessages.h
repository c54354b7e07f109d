#pragma once

#include "support/messageText.h"

/// What the browser's commands say.

inline constexpr TmessageText tooManyRecords = {
    "Cannot add equipment records. Equipment record limit has been reached.\nDelete equipment records and try again.",
    "Too Many Equipment Records", TmessageIcon::warning};

inline constexpr TmessageText deleteRecords = {"Do you want to delete the selected equipment records?",
                                               "Delete Records?", TmessageIcon::warning};

inline constexpr TmessageText noRecordsToUpload = {"No Equipment Records to upload.", "No Equipment Records To Upload",
                                                   TmessageIcon::warning};

inline constexpr TmessageText nothingToPrint = {"No Equipment Records to print.", "No Equipment Records To Print",
                                                TmessageIcon::warning};

inline constexpr TmessageText exportNotOpened = {"Could not open export file.", "Error", TmessageIcon::error};

inline constexpr TmessageText nothingToExport = {"There is no information to export", "No Data",
                                                 TmessageIcon::information};

inline constexpr TmessageText exportSelected = {"Do you want to export only the selected records?", "Export Records?",
                                                TmessageIcon::question};

inline constexpr TmessageText exportNotWritten = {"Could not write the export file.", "Error", TmessageIcon::error};

inline constexpr TmessageText unsavedChangesFound = {
    "The program ended before the last changes were saved.\n\nDo you want to restore them?", "Unsaved Changes Found",
    TmessageIcon::question};

inline constexpr TmessageText tooManyToRestore = {
    "The changes cannot be restored: there would be more than 18432 equipment records.", "Unsaved Changes Found",
    TmessageIcon::warning};
