#pragma once

#include <filesystem>
#include <string_view>

/// The log `EquipmentRecord.log`: what was done, and why something failed. It never holds a record's texts.
///
/// Every function may be called from any thread, never throws, and does nothing while no log is open or where the file
/// cannot be written: a log disturbs nobody.

/// Opens the log in this folder, or goes on with the open one if it lies there.
void openLog(const std::filesystem::path& folder) noexcept;
void closeLog() noexcept;

/// Adds one line: something that happened, and something that failed.
void logInfo(std::string_view text) noexcept;
void logFailure(std::string_view text) noexcept;

/// Logs the exception that is being handled, and where it ended; to be called inside a `catch (...)`.
void logCaught(std::string_view where) noexcept;
