#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <vector>

/// Makers of the test classes that the main function in testMain.cpp runs, one after the other.
inline std::vector<std::function<std::unique_ptr<QObject>()>> testMakers;

/// Registers a test class. Stands after its definition.
#define EQREC_TEST(Test)                           \
  [[maybe_unused]] static const bool added##Test = \
      (testMakers.emplace_back([] { return std::make_unique<Test>(); }), true)
