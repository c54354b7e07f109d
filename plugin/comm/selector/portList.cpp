#include "comm/selector/portList.h"

#include <QComboBox>
#include <algorithm>

#include "support/plainToolTip.h"

QString portName(int number) {
  return QStringLiteral("COM%1").arg(number);
}

std::vector<TportItem> portItems(const TfoundPorts& found, int stored) {
  std::vector<TportItem> items;
  for (const TfreePort& port : found.ports) {
    items.push_back({port.number, portName(port.number), QString::fromStdString(port.deviceName), true});
  }
  const auto place = std::find_if(items.begin(), items.end(), [&](const auto& item) { return item.number >= stored; });
  const bool isFound = place != items.end() && place->number == stored;
  if (!found.complete && stored > 0 && !isFound) {
    items.insert(place, {stored, portName(stored) + QStringLiteral(", searching..."), {}, false});
  }
  if (!items.empty()) return items;
  return {{0, found.complete ? QStringLiteral("<No Free Ports>") : QStringLiteral("Searching..."), {}, false}};
}

void fillPortList(QComboBox& list, const std::vector<TportItem>& items) {
  int row = 0;
  for (const TportItem& item : items) {
    while (row < list.count() && list.itemData(row).toInt() < item.number) list.removeItem(row);
    const bool stays = row < list.count() && list.itemData(row).toInt() == item.number;
    if (!stays) list.insertItem(row, item.text, item.number);
    list.setItemText(row, item.text);
    list.setItemData(row, plainToolTip(item.toolTip), Qt::ToolTipRole);
    ++row;
  }
  while (row < list.count()) list.removeItem(row);
}
