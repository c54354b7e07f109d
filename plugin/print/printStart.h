#pragma once

class QPagedPaintDevice;
class QPainter;

enum class TprintStart { started, cancelled, failed };

/// Begins to paint on a device. On Windows the system may ask for the name of a file at that moment, where a printer
/// prints to one, and the user may cancel that.
TprintStart startPrinting(QPainter& painter, QPagedPaintDevice& device);
