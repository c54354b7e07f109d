#pragma once

#include <QObject>
#include <functional>
#include <memory>

/// Adds a test class to those that the program's main function, in testMain.cpp, runs one after the other. Returns
/// true.
bool addTest(std::function<std::unique_ptr<QObject>()> make);

/// To be put beside the definition of a test class.
#define EQREC_TEST(Test) \
  [[maybe_unused]] static const bool added##Test = addTest([] { return std::make_unique<Test>(); })
