#pragma once

#include <QString>

class QWidget;

/// What does not fit in a window: the window on its screen, or a control that has less room than its text needs. Empty
/// if everything fits.
QString misfitIn(const QWidget* window);
