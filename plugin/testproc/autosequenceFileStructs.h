#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "support/messages.h"

class TfileSystem;

inline constexpr std::size_t maxTestProcNumber = 500;

/// The titles of the analyzer's test procedures (Windows-1252) by number, 1 to 500. An entry titled "(UNUSED)" is an
/// empty slot of the analyzer, and stays in the table as it stands in the file.
class TtestProcTable {
 public:
  /// The title of a procedure; empty for a number without an entry, any number at all.
  std::string_view title(unsigned number) const;

  bool hasEntry(unsigned number) const { return number <= maxTestProcNumber && present_[number]; }
  std::size_t count() const;

  /// `number` must be one from 1 to 500.
  void set(unsigned number, std::string_view title);

 private:
  std::array<std::string, maxTestProcNumber + 1> titles_;
  std::array<bool, maxTestProcNumber + 1> present_{};
};

enum class TtestProcLoad { loaded, missing, damaged };

/// Reads the analyzer's test procedure list (`testProc.asq`; docs/file-formats.md has its layout). Only with `loaded`
/// does `table` hold what the file says; otherwise it is empty.
TtestProcLoad loadTestProcTable(TfileSystem& files, const std::filesystem::path& path, TtestProcTable& table);

/// The warning about a damaged list.
inline constexpr TmessageText corruptTestProcList = {
    "Warning!! Corrupt Test Procedure List\nPlease restore the list from the QT484.", "Test Procedure Error",
    TmessageIcon::warning};
