#pragma once

#include <QString>
#include <cstddef>

#include "import/importRemarks.h"
#include "import/importRun.h"
#include "store/columns.h"

/// A field's name as the mapping dialog shows it: "Device ID", or the user's caption of a custom field.
QString importFieldName(std::size_t field, const Tcaptions& captions);

/// A remark in the user's words, without the row and the Device ID: "Manufacturer cut to 21 characters, from "..."".
QString remarkText(const TimportFinding& finding, const Tcaptions& captions);

/// What became of the rows: "12 added, 3 updated, 2 skipped, 1 without Device ID, 4 with remarks".
QString importSummary(const TimportRun& run);
