#include "browser/columns.h"

#include <algorithm>

#include "browser/settings.h"
#include "store/datastructs.h"

void TcolumnLayout::build(const TbrowserSettings& settings) {
  const TdisplayFlags& display = settings.display;
  ids_.clear();
  const auto add = [this](bool shown, TcolumnId id) {
    if (shown) ids_.push_back(id);
  };
  add(true, columnNumber);
  add(true, fieldControlNum);
  add(display.description, fieldDescription);
  add(display.manufacturer, fieldManufacturer);
  add(display.model, fieldModel);
  add(true, columnTestProc);
  add(display.title, columnTitle);
  add(display.custom[0], fieldCustom1);
  add(display.custom[1], fieldCustom2);
  add(display.custom[2], fieldCustom3);
  customNames_.assign(settings.customNames.begin(), settings.customNames.end());
}

TcolumnId TcolumnLayout::id(int index) const {
  return index >= 0 && index < count() ? ids_[static_cast<std::size_t>(index)] : columnNotFound;
}

int TcolumnLayout::index(TcolumnId id) const {
  const auto found = std::find(ids_.begin(), ids_.end(), id);
  return found == ids_.end() ? -1 : static_cast<int>(found - ids_.begin());
}

std::string TcolumnLayout::header(TcolumnId id) const {
  switch (id) {
    case columnNumber:
      return "No.";
    case fieldControlNum:
      return "Control Number";
    case fieldDescription:
      return "Description";
    case fieldManufacturer:
      return "Manufacturer";
    case fieldModel:
      return "Model";
    case columnTestProc:
      return "Test Procedure";
    case columnTitle:
      return "Test Procedure Title";
    case fieldCustom1:
    case fieldCustom2:
    case fieldCustom3:
      return customNames_[static_cast<std::size_t>(id - fieldCustom1)];
    default:
      return "Unknown";
  }
}
