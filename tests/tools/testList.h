#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <vector>

/// Makes the test classes that the program's main function, in testMain.cpp, runs one after the other.
inline std::vector<std::function<std::unique_ptr<QObject>()>> testMakers;

/// To be put beside the definition of a test class.
#define EQREC_TEST(Test)                           \
  [[maybe_unused]] static const bool added##Test = \
      (testMakers.emplace_back([] { return std::make_unique<Test>(); }), true)
