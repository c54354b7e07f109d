#pragma once

#include <QString>

class QWidget;

/// What the help key brought up.
struct ThelpShown {
  bool isThere = false;
  QWidget* window = nullptr;  ///< null if the window is not one of Qt's
  QString how;
};

/// Waits for the guide's window.
ThelpShown awaitHelp();

bool isHelpOpen();
