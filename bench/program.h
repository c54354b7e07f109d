#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// Runs a program (found by PATH) to its end, with files as its standard input and output, in the C locale and without
/// any other environment. Returns the milliseconds from its start to its end. Throws `std::runtime_error` if it does
/// not start or does not end with code 0.
double runProgram(const std::vector<std::string>& command, const std::filesystem::path& input,
                  const std::filesystem::path& output);
