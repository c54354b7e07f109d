#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "store/erException.h"
#include "support/messageText.h"

/// The message for the status of a load or a save; nothing for success. The texts speak of loading in both cases, which
/// is established wording.
std::optional<TmessageText> loadMessage(TERStatus status);
std::optional<TmessageText> saveMessage(TERStatus status);

/// The message for a load or a save that ended with a `TERException` of this code.
TmessageText exceptionMessage(TERStatus code);

/// The messages of a save that succeeded, although another program had changed or removed the files meanwhile.
inline constexpr TmessageText listsJoined = {
    "The equipment records were also changed by another program.\nBoth changes were saved.", "List Changed Meanwhile",
    TmessageIcon::information};
inline constexpr TmessageText listsNotJoined = {
    "The equipment records were also changed by another program.\nYour list was saved.", "List Changed Meanwhile",
    TmessageIcon::information};
inline constexpr TmessageText filesRemoved = {
    "The equipment record files were removed by another program.\nYour list was saved.", "List Changed Meanwhile",
    TmessageIcon::information};

/// What stands below these messages. `kept` names the copies of the other program's files.
std::string joinDetails(std::size_t fieldsInBoth, const std::string& kept);
std::string notJoinedDetails(bool readable, const std::string& kept);

/// What stands below the message of a save that failed.
inline constexpr const char* changesOffered =
    "Your changes are not lost. When you open this list again, the program offers to restore them.";
inline constexpr const char* changesNotSafe = "Your changes could not be stored anywhere else, either.";
