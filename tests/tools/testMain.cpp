#include <QApplication>
#include <QTest>

#include "tools/dialogs.h"
#include "tools/testList.h"

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  watchDialogs();
  int failures = testMakers.empty() ? 1 : 0;
  for (const auto& make : testMakers) failures += QTest::qExec(make().get(), argc, argv);
  return failures;
}
