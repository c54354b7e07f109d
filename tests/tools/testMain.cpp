#include <QApplication>
#include <QTest>
#include <utility>
#include <vector>

#include "tools/testList.h"

namespace {

using Tmake = std::function<std::unique_ptr<QObject>()>;

std::vector<Tmake>& tests() {
  static std::vector<Tmake> list;
  return list;
}

}  // namespace

bool addTest(Tmake make) {
  tests().push_back(std::move(make));
  return true;
}

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  int failures = 0;
  for (const Tmake& make : tests()) failures += QTest::qExec(make().get(), argc, argv);
  return failures;
}
