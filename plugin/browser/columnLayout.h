#pragma once

#include <string>
#include <vector>

#include "store/columns.h"

struct TbrowserSettings;

/// The columns of the grid: which, in which order, with which headings.
class TcolumnLayout {
 public:
  /// Rebuilds the columns from the user's choices.
  void build(const TbrowserSettings& settings);

  int count() const { return static_cast<int>(ids_.size()); }
  /// What the column at `index` shows; `columnNotFound` if there is none.
  TcolumnId id(int index) const;
  /// The index of the column that shows `id`; -1 if there is none.
  int index(TcolumnId id) const;
  /// The heading (Windows-1252) of the column that shows `id`; "Unknown" for an unknown code.
  std::string header(TcolumnId id) const { return columnHeading(id, captions_); }

 private:
  std::vector<TcolumnId> ids_;
  Tcaptions captions_ = defaultCaptions();
};
