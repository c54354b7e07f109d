#pragma once

#include <cstddef>
#include <functional>

class QPagedPaintDevice;
class QString;
class Treport;

enum class ToutputResult { done, cancelled, failed };

/// Pages of a report, counted from 0.
struct TpageRange {
  std::size_t first;
  std::size_t end;  ///< one past the last
};

/// Called before each page with its number, counted from 0. Returning false cancels.
using TpageStart = std::function<bool(std::size_t page)>;

/// Prints pages of a report on a printer or another device with the report's paper. Holds one page in memory at a time.
/// After a cancel it asks the printer to drop the pages so far, which not every system can do.
ToutputResult printReport(const Treport& report, QPagedPaintDevice& device, const TpageRange& pages,
                          const TpageStart& start);

/// Writes a report as a PDF file. Unless the result is `done`, `path` stays as it was.
ToutputResult savePdf(const Treport& report, const QString& path, const TpageStart& start);
