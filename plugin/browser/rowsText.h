#pragma once

#include <QString>

#include "browser/recordList.h"

/// Rows of the grid as a spreadsheet takes them from the clipboard: a line of headings and one line for each row, with
/// tabs between the columns. A tab or a line break in a text becomes a blank; a text that begins with a double quote is
/// quoted.
QString rowsText(const TrecordList& list, const TrowRange& rows);
