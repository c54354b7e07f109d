#pragma once

#include <filesystem>
#include <string_view>

/// The log `EquipmentRecord.log`: what was done, and why something failed. It never holds a record's texts.
///
/// Every function may be called from any thread, never throws, and does nothing while no log is open or where the file
/// cannot be written: a log disturbs nobody. Several programs may write one log; each line stays whole. The file has at
/// most 1 MB: what comes after that is lost.

/// Opens the log in this folder and closes any other. Once the file is larger than half of what it may have, it becomes
/// `EquipmentRecord.old.log`, replacing the older one. The file is created with its first line.
void openLog(const std::filesystem::path& folder) noexcept;
void closeLog() noexcept;

/// Adds one line: something that happened, and something that failed. Control characters in the text become blanks, and
/// a very long text is cut.
void logInfo(std::string_view text) noexcept;
void logFailure(std::string_view text) noexcept;

/// Logs the exception that is being handled, and where it was caught; to be called inside a `catch (...)`.
void logCaught(std::string_view where) noexcept;
