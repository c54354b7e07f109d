#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "support/messageText.h"

class TfileSystem;

inline constexpr std::size_t maxTestProcNumber = 500;

/// The titles of the analyzer's test procedures (Windows-1252) by number, 1 to 500. An entry titled "(UNUSED)" is an
/// empty slot of the analyzer; the table keeps it like any other.
class TtestProcTable {
 public:
  /// The title of a procedure; empty if the number, in or out of range, has no entry.
  std::string_view title(unsigned number) const;

  bool hasEntry(unsigned number) const { return number <= maxTestProcNumber && present_[number]; }
  std::size_t count() const;

  /// `number` must be from 1 to 500.
  void set(unsigned number, std::string_view title);

 private:
  std::array<std::string, maxTestProcNumber + 1> titles_;
  std::array<bool, maxTestProcNumber + 1> present_{};
};

enum class TtestProcLoad { loaded, missing, damaged };

/// Reads the analyzer's test procedure list (`testProc.asq`; docs/file-formats.md describes its layout). `table` holds
/// the file's content if the result is `loaded`, and is empty otherwise.
TtestProcLoad loadTestProcTable(TfileSystem& files, const std::filesystem::path& path, TtestProcTable& table);

/// The warning that the list is damaged.
inline constexpr TmessageText corruptTestProcList = {
    "Warning!! Corrupt Test Procedure List\nPlease restore the list from the QT484.", "Test Procedure Error",
    TmessageIcon::warning};
