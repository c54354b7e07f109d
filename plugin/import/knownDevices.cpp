#include "import/knownDevices.h"

#include <algorithm>

#include "import/importLine.h"

TknownDevices::TknownDevices(const TequipRecTable& table) : index_(std::max(table.count(), equipRecLimit)) {
  devices_.reserve(std::max(table.count(), equipRecLimit));
  for (TrecordIndex i = 0; i < table.count(); ++i) {
    const auto [device, isFirst] = add(table.at(i), i);
    device->isNew = false;
    device->isSeveral = !isFirst;
  }
}

const TknownDevices::Tdevice* TknownDevices::find(std::string_view deviceId) const {
  const std::uint32_t found = index_.find(deviceId);
  return found == TtextIndex::none ? nullptr : &devices_[found];
}

std::pair<TknownDevices::Tdevice*, bool> TknownDevices::add(const TequipRec& record, TrecordIndex index) {
  const auto next = static_cast<std::uint32_t>(devices_.size());
  const auto [known, isAdded] = index_.add(withoutBlanks(record.text(fieldControlNum)), next);
  if (isAdded) devices_.push_back({index});
  return {&devices_[known], isAdded};
}
