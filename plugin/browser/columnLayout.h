#pragma once

#include <string>
#include <vector>

#include "store/columns.h"

struct TbrowserSettings;

/// Which columns the grid has, in which order, and how they are headed.
class TcolumnLayout {
 public:
  /// Rebuilds the columns from the user's choices.
  void build(const TbrowserSettings& settings);

  int count() const { return static_cast<int>(ids_.size()); }
  /// What the column at `index` shows; `columnNotFound` where there is none.
  TcolumnId id(int index) const;
  /// The index of the column that shows `id`; -1 where there is none.
  int index(TcolumnId id) const;
  /// The heading (Windows-1252) of the column that shows `id`; "Unknown" for a code that is none.
  std::string header(TcolumnId id) const { return columnHeading(id, captions_); }

 private:
  std::vector<TcolumnId> ids_;
  Tcaptions captions_ = defaultCaptions();
};
