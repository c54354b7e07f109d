#pragma once

#include <cstddef>
#include <functional>
#include <optional>

class QPagedPaintDevice;
class QString;
class Treport;

enum class ToutputResult { done, cancelled, failed };

/// Pages of a report, counted from 0.
struct TpageRange {
  std::size_t first;
  std::size_t end;  ///< one past the last
};

/// The pages from one number to the other, which count from 1; 0 stands for the first or the last page. Nothing where
/// the report does not have all of them.
std::optional<TpageRange> chosenPages(int from, int to, std::size_t pageCount);

/// Called before each page with its number, counted from 0. Returning false cancels.
using TpageStart = std::function<bool(std::size_t page)>;

/// Prints pages of a report on a printer or another device with the report's paper. Holds one page in memory at a time.
/// After a cancel it asks the printer to drop the pages so far, which not every system can do.
ToutputResult printReport(const Treport& report, QPagedPaintDevice& device, const TpageRange& pages,
                          const TpageStart& start);

/// Writes a report as a PDF file. Unless the result is `done`, `path` stays as it was.
ToutputResult savePdf(const Treport& report, const QString& path, const TpageStart& start);
