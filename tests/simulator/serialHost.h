#pragma once

#include "simulator/testHost.h"

/// Whether the analyzer has a serial link on this system; it needs pseudo-terminals for it.
extern const bool hasSerialLink;

/// A host at the serial port of that path. Unusable where it cannot be opened.
TtestHost openSerialHost(const QByteArray& path);
