#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// Runs a program (found by PATH) to its end, its standard input and output being files, in the C locale and otherwise
/// without environment. Returns the milliseconds from its start to its end. Throws `std::runtime_error` where it does
/// not start, or ends with another code than 0.
double runProgram(const std::vector<std::string>& command, const std::filesystem::path& input,
                  const std::filesystem::path& output);
