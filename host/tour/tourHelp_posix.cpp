#include <QApplication>
#include <QTest>
#include <QWidget>

#include "host/tour/tourHelp.h"

namespace {

QWidget* helpWindow() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() == QStringLiteral("ThelpWindow") && window->isVisible()) return window;
  }
  return nullptr;
}

}  // namespace

ThelpShown awaitHelp() {
  const bool isThere = QTest::qWaitFor([] { return helpWindow() != nullptr; });
  return {isThere, helpWindow(), QStringLiteral("the user's guide in a window of its own")};
}

bool isHelpOpen() {
  return helpWindow() != nullptr;
}
