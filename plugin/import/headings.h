#pragma once

#include <cstddef>
#include <string>

#include "import/importFields.h"
#include "import/tokeniser.h"
#include "store/columns.h"

// What the headings of a file say: our own names, those of other programs in English and German, and the user's
// captions of the custom fields. Case, blanks and punctuation do not count, and an umlaut may be written "ae".

/// Finds each field's column by its heading. The captions of the custom fields come first, then the names. A caption
/// that means something else, too, comes behind "Custom 1". No column serves two fields.
TfieldColumns columnsByHeadings(const TfieldList& headings, const Tcaptions& captions);

/// Whether a row has a heading for the Device ID.
bool namesDeviceId(const TfieldList& row, const Tcaptions& captions);

/// Whether a row can only be one of headings: it names the Device ID and another field, or it names the Device ID and
/// nothing else in it is empty or holds a digit. A record's own texts seldom name one field and hardly ever two.
bool looksLikeHeadings(const TfieldList& row, const Tcaptions& captions);

/// The row by which the columns are found: `before` the start row, or the file's `first` one if only that names the
/// Device ID.
const TfieldList& headingRow(const TfieldList& before, const TfieldList& first, const Tcaptions& captions);

/// The heading of a field in a file of ours, by which `columnsByHeadings` finds it again whatever the captions are: a
/// custom field's caption, or "Custom 1" where the caption means something else, too.
std::string writtenHeading(std::size_t field, const Tcaptions& captions);
