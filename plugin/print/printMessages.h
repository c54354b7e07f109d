#pragma once

#include "support/messageText.h"

// The messages of printing.

inline constexpr TmessageText noPrinter = {
    "No printer is installed on this computer.\nPreview and Save as PDF work without one.", "No Printer",
    TmessageIcon::warning};

inline constexpr TmessageText noSuchPages = {"The report does not have all of these pages.", "No Such Pages",
                                             TmessageIcon::warning};

inline constexpr TmessageText noLandscape = {
    "The printer does not print this paper in landscape.\nPrint the report in portrait?", "No Landscape",
    TmessageIcon::question};

inline constexpr TmessageText printFailed = {
    "The equipment records could not be printed.\nCheck the printer and try again.", "Print Error",
    TmessageIcon::error};

inline constexpr TmessageText pdfNotWritten = {
    "The PDF file could not be written.\nChoose another folder or file name and try again.", "PDF Error",
    TmessageIcon::error};
