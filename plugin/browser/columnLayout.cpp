#include "browser/columnLayout.h"

#include <algorithm>

#include "browser/settings.h"

void TcolumnLayout::build(const TbrowserSettings& settings) {
  ids_.clear();
  for (std::size_t i = 0; i < allColumns.size(); ++i) {
    if (settings.shown[i]) ids_.push_back(allColumns[i].id);
  }
  captions_ = settings.captions;
}

TcolumnId TcolumnLayout::id(int index) const {
  return index >= 0 && index < count() ? ids_[static_cast<std::size_t>(index)] : columnNotFound;
}

int TcolumnLayout::index(TcolumnId id) const {
  const auto found = std::find(ids_.begin(), ids_.end(), id);
  return found == ids_.end() ? -1 : static_cast<int>(found - ids_.begin());
}
