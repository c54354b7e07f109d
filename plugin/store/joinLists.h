#pragma once

#include <cstddef>
#include <vector>

#include "store/recordEdits.h"

/// How our edits go into a list that others have changed.
struct Tjoined {
  TlistChange change;            ///< to be made on their list; empty if it holds everything already
  std::size_t fieldsInBoth = 0;  ///< fields that both changed, to different values; ours counts
};

/// Joins their list and our changes, by content. `ours` are net edits of the list that both started from.
///
/// - A record that is still as it was takes our change.
/// - One with the same control number that they changed is joined field by field; ours where both changed a field. The
///   number must not be blank, and each list must have it once.
/// - What one removed and the other changed stays, changed.
/// - What both added, changed or removed alike is there, or gone, once. Our changes joined again change nothing.
/// - Records that only we have come at the end, in our order.
///
/// Takes time linear in both. The change may lead beyond the analyzer's limit of records; the caller checks.
///
/// What contents and counts cannot tell:
/// - Which of several equal records somebody changed. Any of them takes the change.
/// - Whether they changed a control number, or removed one record and added another. If we changed that record, both
///   stay.
/// - Whether our changes were joined before, once others have changed what came of them: a record that we added comes
///   again, as does one whose control number we changed.
Tjoined joinLists(const TequipRecTable& theirs, const TlistEdits& ours);

/// Joins the changes of several programs that knew nothing of each other, one after the other. Returns what they come
/// to, as net edits of `theirs`.
TlistEdits joinAll(const TequipRecTable& theirs, std::vector<TlistEdits> programs);
