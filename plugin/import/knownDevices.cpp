#include "import/knownDevices.h"

#include "import/importLine.h"

TknownDevices::TknownDevices(const TequipRecTable& table) {
  devices_.reserve(equipRecLimit);
  for (TrecordIndex i = 0; i < table.count(); ++i) add(table.at(i), i, false);
}

const TknownDevices::Tdevice* TknownDevices::find(std::string_view deviceId) const {
  const auto found = devices_.find(deviceId);
  return found == devices_.end() ? nullptr : &found->second;
}

void TknownDevices::add(const TequipRec& record, TrecordIndex index, bool isNew) {
  const auto [known, isFirst] =
      devices_.try_emplace(withoutBlanks(record.text(fieldControlNum)), Tdevice{index, isNew, false});
  if (!isFirst) known->second.isSeveral = true;
}
