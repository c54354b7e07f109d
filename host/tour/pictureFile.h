#pragma once

#include <QImage>

/// Saves a picture of a window as a small PNG file: of at most 128 colours, which show no difference to the eye.
/// Returns whether it could be written.
bool savePicture(const QImage& picture, const QString& path);
