// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vfTest {

/// What came of a program.
struct Outcome
{
    int status = -1; ///< its exit status; minus the number of the signal that ended it
    std::string out;
    std::string err;
};

/// Runs a program to its end, at most two minutes, with an empty standard input.
/// @param arguments  the first is the program, by path or by name
/// @param directory  where it runs; empty for here
Outcome runProgram(const std::vector<std::string>& arguments, const std::string& directory = std::string());

} // namespace vfTest
