// SPDX-License-Identifier: MIT
#pragma once

#include "TemporaryDirectory.h"

#include <string>
#include <vector>

#include <sys/types.h>

namespace vfTest {

/// What came of a program.
struct Outcome
{
    int status = -1; ///< its exit status; minus the number of the signal that ended it
    std::string out;
    std::string err;
};

/// A program that runs beside the test, at most ten minutes, with an empty standard input; it is ended with this object.
class RunningProgram
{
public:
    /// @param arguments  the first is the program, by path or by name
    /// @param directory  where it runs; empty for here
    explicit RunningProgram(const std::vector<std::string>& arguments,
                            const std::string& directory = std::string());
    ~RunningProgram();

    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    /// Waits for its end that long at most. @return whether it is over
    bool isOverWithin(int milliseconds);

    /// Waits for its end. @return what came of it
    Outcome wait();

    /// Asks it to end, by SIGTERM.
    void terminate() const;

    pid_t process() const { return m_process; }

private:
    const TemporaryDirectory m_place; ///< for what it prints
    pid_t m_process;
    bool m_isOver = false;
    int m_status = 0;
};

/// Runs a program to its end, at most ten minutes, with an empty standard input.
/// @param arguments  the first is the program, by path or by name
/// @param directory  where it runs; empty for here
Outcome runProgram(const std::vector<std::string>& arguments, const std::string& directory = std::string());

} // namespace vfTest
