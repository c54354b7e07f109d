#pragma once

#include <filesystem>

class Tview;
class TtestProcTable;

enum class TexportResult { done, notOpened, nothingShown };

/// Writes the records of the view, in its order, to a comma-separated text file: a heading line, then one line for each
/// record, flushed line by line. Empties the file first, even where there is nothing to export. Fields are neither
/// quoted nor escaped, and the index counts from 0: established format. The result says nothing of errors after the
/// opening; the log does.
TexportResult exportRecords(const Tview& view, const TtestProcTable& titles, const std::filesystem::path& path);
