// SPDX-License-Identifier: MIT
#pragma once

#include "support/TemporaryDirectory.h"

#include <string>

#include <sys/types.h>

namespace vfLife {

/// One cell of a matrix, played in a process of its own, with a home directory of its own.
///
///     Cell cell;
///     if (cell.isChild())
///         cell.tell(play(hook, action, 1));
///     const std::string outcome = cell.outcome();
class Cell
{
public:
    /// Forks. What the child prints on standard output is discarded; standard error stays, for the sanitizers.
    Cell();
    ~Cell();

    Cell(const Cell&) = delete;
    Cell& operator=(const Cell&) = delete;

    /// Returns whether this process is the child.
    bool isChild() const { return m_child == 0; }

    /// Ends the child. @p outcome is what outcome() returns. If @p checksLeaks is true, the exit handlers run, so that leaks
    /// are found.
    [[noreturn]] void tell(const std::string& outcome, bool checksLeaks = true) const;

    /// Waits for the child. @return what it told, or how it ended instead
    std::string outcome();

private:
    const vfTest::TemporaryDirectory m_home;
    int m_ends[2] = {-1, -1};
    pid_t m_child = -1;
};

/// Returns the row of the table in docs/lifecycle.md that begins with a name; empty if there is none.
std::string documentedRow(const std::string& name);

/// Returns the name of a hook as a name of a test.
std::string testName(const std::string& hook);

} // namespace vfLife
