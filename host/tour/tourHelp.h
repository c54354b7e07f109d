#pragma once

#include <QString>

class QWidget;

/// What came of the wish for help.
struct ThelpShown {
  bool isThere = false;
  QWidget* window = nullptr;  ///< where it is one of this program's
  QString how;
};

/// Waits for the guide's window.
ThelpShown awaitHelp();

bool isHelpOpen();
