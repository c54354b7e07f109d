#pragma once

#include <filesystem>
#include <vector>

#include "store/columns.h"
#include "support/fileSystem.h"

/// Writes records, in the given order, to a file that spreadsheets open and the import reads back to the byte: commas,
/// quotes where needed (RFC 4180), UTF-8 with a byte order mark. Under headings that the import knows, each record has
/// all its texts and the number of its test procedure. All or nothing: a failure leaves an existing file as it was.
Toutcome writeSpreadsheet(TfileSystem& files, const std::filesystem::path& path, const TequipRecTable& records,
                          const std::vector<TrecordIndex>& which, const Tcaptions& captions);
