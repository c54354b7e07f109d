#include "import/knownDevices.h"

#include "import/importLine.h"

TknownDevices::TknownDevices(const TequipRecTable& table) {
  devices_.reserve(equipRecLimit);
  for (TrecordIndex i = 0; i < table.count(); ++i) {
    const auto [device, isFirst] = add(table.at(i), i);
    device->isNew = false;
    device->isSeveral = !isFirst;
  }
}

const TknownDevices::Tdevice* TknownDevices::find(std::string_view deviceId) const {
  const auto found = devices_.find(deviceId);
  return found == devices_.end() ? nullptr : &found->second;
}

std::pair<TknownDevices::Tdevice*, bool> TknownDevices::add(const TequipRec& record, TrecordIndex index) {
  const auto [known, isAdded] = devices_.try_emplace(withoutBlanks(record.text(fieldControlNum)), Tdevice{index});
  return {&known->second, isAdded};
}
