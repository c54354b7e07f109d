#pragma once

#include <QPalette>

/// The colour of links on a background of this role: the palette's own, or that of texts where a dark palette has left
/// links in dark blue.
QColor readableLink(const QPalette& palette, QPalette::ColorRole background);
