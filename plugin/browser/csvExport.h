#pragma once

#include <filesystem>

class Tview;
class TtestProcTable;

enum class TexportResult { done, notOpened, nothingShown };

/// Writes the records of the view, in its order, to a comma-separated text file, a line each behind a heading line,
/// each line in the system's hands as it is written. Whatever the file held is gone, also where there is nothing to
/// export. Fields are neither quoted nor escaped, and the index counts from 0: established format. Errors after the
/// opening go unnoticed.
TexportResult exportRecords(const Tview& view, const TtestProcTable& titles, const std::filesystem::path& path);
