#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "store/listChange.h"

/// What a change did to one record, told by content, so that it can be made on a list that others have changed, too.
struct TlistEdit {
  std::optional<TequipRec> was;     ///< nothing if the record was added
  std::optional<TequipRec> became;  ///< nothing if the record was removed
  std::uint32_t alike = 0;          ///< records equal to `became` in the list before; 0 if removed
  std::uint32_t sameNumber = 0;     ///< other records with the control number of `was` in the list before; 0 if added
  std::uint32_t sameContent = 0;    ///< other records equal to `was` in the list before; 0 if added
};

/// Edits in the order in which they were made.
using TlistEdits = std::vector<TlistEdit>;

/// How many records of a list are equal to a record, and how many have a control number. Keeps hashes, not records:
/// asking and following an edit take constant time.
class TrecordCounts {
 public:
  TrecordCounts() = default;
  explicit TrecordCounts(const TequipRecTable& table);

  void add(const TequipRec& record);
  void remove(const TequipRec& record);
  std::uint32_t equalTo(const TequipRec& record) const;
  std::uint32_t withNumberOf(const TequipRec& record) const;

 private:
  std::unordered_map<std::uint64_t, std::uint32_t> counts_;
};

/// What a step, which must fit `table`, is going to do to its records. `counts` are those of `table`, and follow.
TlistEdits editsOf(const TlistStep& step, const TequipRecTable& table, TrecordCounts& counts);

/// The edits as bytes, and back; nothing unless the bytes are whole. docs/file-formats.md shows the format.
std::string encodedEdits(const TlistEdits& edits);
std::optional<TlistEdits> decodedEdits(std::string_view bytes);

/// What edits, made one after the other, come to: at most one edit for each record, in the order of first appearance. A
/// record that is again as it was has none, nor has one that was added and removed. An addition equal to a removed
/// record, as it was at first or last, takes that record back. `alike` and `sameContent` count in the list before the
/// first edit, `sameNumber` in the list before the record's first edit. Records of equal content are interchangeable.
/// Linear in the edits.
TlistEdits netEdits(TlistEdits edits);
