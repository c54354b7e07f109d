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
  std::size_t end;  ///< the one behind the last
};

/// Is told the number of each page before it begins, counted from 0. False cancels.
using TpageStart = std::function<bool(std::size_t page)>;

/// Prints pages of a report on a printer or another device that has the report's paper. One page is held in memory at
/// a time. When it is cancelled, the printer is told to forget the pages so far; not every system can.
ToutputResult printReport(const Treport& report, QPagedPaintDevice& device, const TpageRange& pages,
                          const TpageStart& start);

/// Writes a report as a PDF file. Unless the result is `done`, nothing is left at `path` that was not there before.
ToutputResult savePdf(const Treport& report, const QString& path, const TpageStart& start);
