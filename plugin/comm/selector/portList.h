#pragma once

#include <QString>
#include <vector>

#include "comm/selector/freePorts.h"

class QComboBox;

/// One item of the list of serial ports.
struct TportItem {
  int number = 0;  ///< in "COM5"; 0 where the text names no port
  QString text;
  QString toolTip;
  bool connectable = false;  ///< is known to be free
};

/// The items for what was found: the free ports, ascending, and until the search is complete the stored port
/// ("COM5, searching..."). If there is none of them, one item that says so. `stored` is 0 for none.
std::vector<TportItem> portItems(const TfoundPorts& found, int stored);

QString portName(int number);

/// Makes the items those of the list. Items that stay are not touched, so that an open list does not flicker.
void fillPortList(QComboBox& list, const std::vector<TportItem>& items);
